#include "widgets/windows/desktop/SimulationMark.h"
#include "widgets/windows/frames/FrameWindow.h"

#include <QDialog>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

using Widgets::FrameWindow;
using Widgets::SimulationMark;

namespace {

QLabel *bandOf(const QWidget &window)
{
    return window.findChild<QLabel *>(QStringLiteral("simulationMark"), Qt::FindDirectChildrenOnly);
}

} // namespace

class SimulationMarkTest : public QObject
{
    Q_OBJECT

private slots:
    void staysWhateverHappens()
    {
        const SimulationMark mark;
        FrameWindow frame;
        frame.setWindowTitle("Котельная");
        frame.resize(400, 300);
        frame.show();
        QVERIFY(frame.windowTitle().startsWith(SimulationMark::text()));
        frame.setWindowTitle("Котёл 1");
        QCOMPARE(frame.windowTitle(), SimulationMark::text() + " — Котёл 1");
        const QLabel *band = bandOf(frame);
        QVERIFY(band && band->isVisible());

        // What opens in the frame later does not cover it, and presses go through it.
        auto *page = new QPushButton("page", &frame);
        page->setGeometry(frame.rect());
        page->show();
        QTRY_VERIFY(frame.children().indexOf(const_cast<QLabel *>(band)) >
                    frame.children().indexOf(page));
        QCOMPARE(frame.childAt(band->geometry().center()), page);
        QCOMPARE(frame.findChildren<QLabel *>("simulationMark").size(), 1);
    }

    void dialogsHaveItInTheTitleAndElementsNotAtAll()
    {
        const SimulationMark mark;
        QDialog dialog;
        dialog.setWindowTitle("Уставка");
        dialog.show();
        QCOMPARE(dialog.windowTitle(), SimulationMark::text() + " — Уставка");
        QVERIFY(!bandOf(dialog));
        QGraphicsScene scene;
        auto *button = new QPushButton("Пуск");
        scene.addWidget(button)->show();
        QVERIFY(button->isVisible());
        QVERIFY(!bandOf(*button));
        QVERIFY(button->windowTitle().isEmpty());
    }

    void nothingIsMarkedWithoutIt()
    {
        QWidget window;
        window.setWindowTitle("Котельная");
        window.show();
        QCOMPARE(window.windowTitle(), QStringLiteral("Котельная"));
        QVERIFY(!bandOf(window));
    }
};

QTEST_MAIN(SimulationMarkTest)
#include "tst_simulation_mark.moc"
