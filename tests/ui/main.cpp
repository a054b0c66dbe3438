// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Runs the tests inside one Qt application.

#include <QApplication>

#include <gtest/gtest.h>

#include <memory>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Not destroyed: Qt's platforms do not give all of their screen back, which is not what is looked for here.
    static QApplication* const application = std::make_unique<QApplication>(argc, argv).release();
    Q_UNUSED(application)
    return RUN_ALL_TESTS();
}
