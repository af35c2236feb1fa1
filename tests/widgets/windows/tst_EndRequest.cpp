#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/auth/systemAuthentication.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QToolButton>

#include <qpa/qwindowsysteminterface.h>

namespace {

constexpr const char *station = R"(
<station id="2" name="St"><authentication id="3" name="A" guestRole="4">
<role id="4" name="Guest"><grant id="5" name="g" privileges="view open close"/></role>
<role id="6" name="Engineer"><grant id="7" name="g" privileges="all"/></role>
<user id="8" name="engineer" roles="6" passwordless="true"/></authentication></station>
<window id="9" name="W" width="400" height="300"/>
<frame id="10" name="Plain" windows="9"/><frame id="11" name="Decorated" border="decorated" windows="9"/>)";

constexpr int stayed = 7;

} // namespace

class EndRequestTest : public QObject
{
    Q_OBJECT

private slots:
    void closingAFrameEndsTheStation_data();
    void closingAFrameEndsTheStation();
    void theEndItselfIsNoRequest();
};

void EndRequestTest::closingAFrameEndsTheStation_data()
{
    const Rows<QString, QString, int, int, QString> row("frame", "how", "answer", "code",
                                                        "journalled");
    row("guest", "Plain", "desktop", int(QMessageBox::NoButton), stayed, "завершение станции");
    row("guest, decorated", "Decorated", "desktop", int(QMessageBox::NoButton), stayed,
        "завершение станции");
    row("guest, its button", "Decorated", "button", int(QMessageBox::NoButton), stayed,
        "завершение станции");
    row("engineer", "Plain", "desktop", int(QMessageBox::Ok), 0, "Станция завершена оператором");
    row("engineer, its button", "Decorated", "button", int(QMessageBox::Ok), 0, ": engineer");
    row("engineer thinks again", "Plain", "desktop", int(QMessageBox::Cancel), stayed, "");
}

void EndRequestTest::closingAFrameEndsTheStation()
{
    QFETCH(QString, frame);
    QFETCH(QString, how);
    QFETCH(int, answer);
    RuntimeProject project(station);
    QVERIFY(project.core.Start());
    project.manager->Start();
    if (answer != QMessageBox::NoButton)
        QVERIFY(
            project.core.GetSystemAuthentication()->Authenticate(project.node(8)->GetNodeLink()));
    QWidget *window = nullptr;
    for (QWidget *shown : QApplication::topLevelWidgets())
        window = shown->windowTitle() == frame ? shown : window;
    QVERIFY(window);

    bool isTold = false;
    QTimer answering;
    connect(&answering, &QTimer::timeout, &answering, [&] {
        for (QWidget *shown : QApplication::topLevelWidgets()) {
            auto *box = qobject_cast<QMessageBox *>(shown);
            if (!box || !box->isVisible())
                continue;
            isTold = true;
            QAbstractButton *button = box->button(QMessageBox::StandardButton(answer));
            (button ? button : box->buttons().first())->click();
        }
    });
    answering.start(10);
    QTimer::singleShot(0, window, [&] {
        if (how == "button")
            window->findChild<QToolButton *>("actionClose")->click();
        else
            QWindowSystemInterface::handleCloseEvent(window->windowHandle());
    });
    QTimer::singleShot(500, qApp, [] { QCoreApplication::exit(stayed); });
    QTEST(QCoreApplication::exec(), "code");
    QVERIFY(isTold && window->isVisible());
    QFETCH(QString, journalled);
    QCOMPARE(project.journalled(journalled) > 0, true);
    QCOMPARE(project.journalled("Станция завершена") > 0, answer == QMessageBox::Ok);
    project.manager.reset();
    project.core.Stop();
}

void EndRequestTest::theEndItselfIsNoRequest()
{
    RuntimeProject project(station);
    QVERIFY(project.core.Start());
    project.manager->Start();
    project.manager->finishActions(100);
    int asked = 0;
    for (QWidget *frame : QApplication::topLevelWidgets()) {
        if (!frame->windowHandle())
            continue;
        QWindowSystemInterface::handleCloseEvent(frame->windowHandle());
        ++asked;
    }
    QVERIFY(asked >= 2);
    QCoreApplication::processEvents();
    QCOMPARE(project.journalled("завершение станции"), 0);
    project.manager.reset();
    project.core.Stop();
}

QTEST_MAIN(EndRequestTest)
#include "tst_EndRequest.moc"
