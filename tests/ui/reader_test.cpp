// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The dialogs as a screen reader sees them: their tree is read over AT-SPI, from another process, on a real X server.

#include "foundation/environment.h"
#include "tests/ui/background.h"
#include "tests/ui/fixture.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/language_texts.h"

#include <QAccessible>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QProcess>
#include <QThread>

#include <cstdio>
#include <unistd.h>
#include <vector>

namespace {

QDBusMessage call(const QDBusConnection& bus, const QString& service, const QString& path, const QString& face,
    const QString& member, const QVariantList& arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, face, member);
    message.setArguments(arguments);
    return bus.call(message, QDBus::Block, driver::patience);
}

const QString accessible = "org.a11y.atspi.Accessible";

QString textOf(const QDBusConnection& bus, const QString& service, const QString& path, const char* property)
{
    const QDBusMessage reply =
        call(bus, service, path, "org.freedesktop.DBus.Properties", "Get", {accessible, property});
    return reply.arguments().isEmpty() ? QString()
                                       : reply.arguments().at(0).value<QDBusVariant>().variant().toString();
}

struct Object {
    QString service, path;
};

std::vector<Object> childrenOf(const QDBusConnection& bus, const Object& parent)
{
    const QDBusMessage reply = call(bus, parent.service, parent.path, accessible, "GetChildren");
    std::vector<Object> children;
    if (reply.arguments().isEmpty())
        return children;
    const auto list = reply.arguments().at(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        children.push_back({service, path.path()});
    }
    list.endArray();
    return children;
}

/** Prints "role|name|description" of an object and everything below. */
void print(const QDBusConnection& bus, const Object& object, int depth = 0)
{
    const QDBusMessage role = call(bus, object.service, object.path, accessible, "GetRoleName");
    std::printf("%*s%s|%s|%s\n", depth, "", qPrintable(role.arguments().value(0).toString()),
        qPrintable(textOf(bus, object.service, object.path, "Name")),
        qPrintable(textOf(bus, object.service, object.path, "Description").replace('\n', ' ')));
    for (const Object& child : childrenOf(bus, object))
        print(bus, child, depth + 1);
}

/** The program of that process: programs register at the bus in their own time, so it is waited for. */
Object programOf(const QDBusConnection& bus, pid_t process)
{
    const Object registry{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
    for (const QDeadlineTimer end(driver::patience); !end.hasExpired(); QThread::msleep(10))
        for (const Object& program : childrenOf(bus, registry))
            if (bus.interface()->servicePid(program.service) == static_cast<uint>(process))
                return program;
    return {};
}

/** The address of the accessibility bus, which starts when it is asked for. */
QString accessibilityBus()
{
    return call(QDBusConnection::sessionBus(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
        .arguments()
        .value(0)
        .toString();
}

/** The reader's process: prints the tree of the program that has started it. */
int readStarter()
{
    const auto bus = QDBusConnection::connectToBus(accessibilityBus(), "accessibility");
    if (!bus.isConnected())
        return 1;
    print(bus, programOf(bus, getppid()));
    return 0;
}

class ReaderTest : public SelectionInBothLanguages {
protected:
    void SetUp() override
    {
        SelectionInBothLanguages::SetUp();
        ASSERT_NE(accessibilityBus(), QString());
        ASSERT_TRUE(QTest::qWaitFor(&QAccessible::isActive, driver::patience));
    }
    /** What a reader in another process sees. */
    static QString tree()
    {
        QProcess reader;
        QEventLoop answering; // the reader asks this program, object by object
        QObject::connect(
            &reader, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &answering, &QEventLoop::quit);
        reader.start(QCoreApplication::applicationFilePath(), {"--read"});
        answering.exec();
        return QString::fromLocal8Bit(reader.readAllStandardOutput());
    }
    /** What a reader is told to say at once. */
    static QStringList announcedWhile(const std::function<void()>& action)
    {
        static QStringList announced;
        announced.clear();
        const auto before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
            if (event->type() == QAccessible::Alert && event->accessibleInterface())
                announced << event->accessibleInterface()->text(QAccessible::Description);
        });
        action();
        QAccessible::installUpdateHandler(before);
        return announced;
    }
    void expectLine(const QString& tree, const QString& role, const QString& name, const QString& description = "")
    {
        const QRegularExpression line("^ *" + role + "\\|" + QRegularExpression::escape(name) + "\\|.*" +
                QRegularExpression::escape(description),
            QRegularExpression::MultilineOption);
        EXPECT_TRUE(line.match(tree).hasMatch()) << qPrintable(role + "|" + name + "|" + description);
    }
    QString ui(const char* key) { return driver::ui(GetParam(), key); }
    QString button(const char* key) { return ui(key).remove('&'); }
};

INSTANTIATE_TEST_SUITE_P(Languages, ReaderTest, testing::Values(korean, english));

} // namespace

TEST_P(ReaderTest, FindsEveryControlOfTheSelectionDialogByItsName)
{
    open(GetParam());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get(), driver::patience));
    const QString seen = tree();
    expectLine(seen, "(dialog|frame|window)", ui("DLG_SELCERT_CAPITON"));
    expectLine(seen, "table", ui("DLG_ACCESS_CERTLIST"));
    expectLine(seen, "cell", QStringLiteral("김하늘"),
        driver::message(GetParam(), "MSG_SELECTCERT_ENDSIN").replace("%s", "12"));
    expectLine(seen, "cell", QStringLiteral("이바다"), ui("DLG_CERVIEWNORAL_CERTEXPIRED"));
    expectLine(seen, "(password )?text", ui("DLG_STATIC_CERTPASSWORD"));
    expectLine(
        seen, "text", ui("DLG_ACCESS_STATUS"), driver::message(GetParam(), "MSG_SELECTCERT_SELCERTINPUTPWD"));
    expectLine(seen, "graphic", ui("DLG_ACCESS_BANNER"));
    expectLine(seen, "push button", button("DLG_BUTTONMEDIA_HDD"));
    expectLine(seen, "push button", button("DLG_BUTTON_VIEW"));
    if (HasFailure())
        std::printf("%s", qPrintable(seen));
}

TEST_P(ReaderTest, FindsTheWordsOfTheViewersPicture)
{
    tagCERTINFO entry = scripted::sampleEntry("x", 5);
    CertViewMainDialog viewer;
    viewer.SetCertificate(driver::texts(GetParam()), nullptr, &entry);
    viewer.InitSetControl();
    viewer.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&viewer, driver::patience));
    const QString seen = tree();
    expectLine(seen, "(filler|page tab list)", ui("DLG_ACCESS_PAGES"));
    expectLine(seen, "graphic", ui("DLG_CERVIEWNORAL_CERTEXPIRED"));
    expectLine(seen, "label", ui("DLG_CERVIEWNORAL_CERTEXPIRED"));
    expectLine(seen, "label", ui("DLG_CERVIEWNORAL_SUBJECTTITLE"));
    if (HasFailure())
        std::printf("%s", qPrintable(seen));
}

TEST_P(ReaderTest, IsToldWhatTheStatusLineSays)
{
    open(GetParam());
    scripted::processor().results["CLP_LoadCertList"] = 1115;
    const QStringList announced = announcedWhile([this] { driver::presses(*dialog, "pushButton_hdd"); });
    EXPECT_EQ(announced, QStringList(driver::message(GetParam(), "MSG_SELECTCERT_NOCERT")));
}

TEST_P(ReaderTest, IsToldThatTheDialogListsAndThatItHasListed)
{
    const sigil::Environment machine = sigil::environment();
    sigil::environment().uptime = [] {
        static std::chrono::milliseconds uptime;
        return uptime += std::chrono::milliseconds(10);
    };
    scripted::processor().files = 20;
    setUp(GetParam());
    const QStringList announced = announcedWhile([this] { dialog->SetInitMediaCert(1); });
    sigil::environment() = machine;
    EXPECT_EQ(announced,
        QStringList({driver::message(GetParam(), "MSG_SELECTCERT_LISTING"),
            driver::message(GetParam(), "MSG_SELECTCERT_SELCERTINPUTPWD")}));
}

int main(int argc, char** argv)
{
    if (argc == 2 && std::string(argv[1]) == "--read") {
        const QCoreApplication application(argc, argv);
        return readStarter();
    }
    testing::InitGoogleTest(&argc, argv);
    const Background server(virtualServer());
    const Background bus(accessibleBus());
    static QApplication* const application = std::make_unique<QApplication>(argc, argv).release(); // as in main.cpp
    Q_UNUSED(application)
    return RUN_ALL_TESTS();
}
