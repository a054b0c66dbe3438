// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the shared way of running the dialog keeps for the process. Not locked: all on the thread of the application.
 */
#pragma once

class QApplication;
class SelectCertDialog;

/** The application that ShowUserCertInit made, or null. */
extern QApplication* g_pQApplication;
/** The dialog that ShowUserCertInit made, or null. */
extern SelectCertDialog* g_dlgUserCert;
