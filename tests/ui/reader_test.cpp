// The dialogs as a screen reader sees them: their tree is read over AT-SPI, from another process, on a real X server.

#include "tests/ui/background.h"
#include "tests/ui/fixture.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/language_texts.h"

#include <QAccessible>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QEventLoop>
#include <QProcess>

#include <cstdio>

namespace {

QDBusMessage call(const QDBusConnection& bus, const QString& service, const QString& path, const QString& face,
    const QString& member, const QVariantList& arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, face, member);
    message.setArguments(arguments);
    return bus.call(message, QDBus::Block, 5000);
}

const QString accessible = "org.a11y.atspi.Accessible";

QString textOf(const QDBusConnection& bus, const QString& service, const QString& path, const char* property)
{
    const QDBusMessage reply =
        call(bus, service, path, "org.freedesktop.DBus.Properties", "Get", {accessible, property});
    return reply.arguments().isEmpty() ? QString()
                                       : reply.arguments().at(0).value<QDBusVariant>().variant().toString();
}

/** Prints "role|name|description" of everything below. */
void print(const QDBusConnection& bus, const QString& service, const QString& path, int depth)
{
    const QDBusMessage role = call(bus, service, path, accessible, "GetRoleName");
    std::printf("%*s%s|%s|%s\n", depth, "", qPrintable(role.arguments().value(0).toString()),
        qPrintable(textOf(bus, service, path, "Name")),
        qPrintable(textOf(bus, service, path, "Description").replace('\n', ' ')));
    const QDBusMessage children = call(bus, service, path, accessible, "GetChildren");
    if (depth > 12 || children.arguments().isEmpty())
        return;
    const auto list = children.arguments().at(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString childService;
        QDBusObjectPath childPath;
        list.beginStructure();
        list >> childService >> childPath;
        list.endStructure();
        print(bus, childService, childPath.path(), depth + 1);
    }
    list.endArray();
}

/** The reader's process: prints the tree of every program on the accessibility bus. */
int readAll()
{
    const QDBusMessage address =
        call(QDBusConnection::sessionBus(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress");
    const auto bus = QDBusConnection::connectToBus(address.arguments().value(0).toString(), "accessibility");
    print(bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root", 0);
    return bus.isConnected() ? 0 : 1;
}

class ReaderTest : public SelectionInBothLanguages {
protected:
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
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
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
    viewer.SetCertificate(sigil::languageFile(SIGILDESK_LIBRARY_FOLDER, GetParam()).c_str(), nullptr, &entry);
    viewer.InitSetControl();
    viewer.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&viewer));
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
    static QStringList announced;
    announced.clear();
    const auto before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
        if (event->type() == QAccessible::Alert && event->accessibleInterface())
            announced << event->accessibleInterface()->text(QAccessible::Description);
    });
    scripted::processor().results["CLP_LoadCertList"] = 1115;
    driver::presses(*dialog, "pushButton_hdd");
    QAccessible::installUpdateHandler(before);
    EXPECT_EQ(announced, QStringList(driver::message(GetParam(), "MSG_SELECTCERT_NOCERT")));
}

int main(int argc, char** argv)
{
    if (argc == 2 && std::string(argv[1]) == "--read") {
        const QCoreApplication application(argc, argv);
        return readAll();
    }
    testing::InitGoogleTest(&argc, argv);
    const Background server(virtualServer());
    const Background bus(accessibleBus());
    static QApplication* const application = std::make_unique<QApplication>(argc, argv).release(); // as in main.cpp
    Q_UNUSED(application)
    return RUN_ALL_TESTS();
}
