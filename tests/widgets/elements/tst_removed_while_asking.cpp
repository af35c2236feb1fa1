#include "support/Rows.h"
#include "support/RuntimeProject.h"
#include "support/WhenShown.h"

#include "widgets/charts/axes/ToolBarAxisX.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/plots/WaitBox.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/WindowBasic.h"

#include "nodes/archive/HistoryService.h"
#include "nodes/archive/HistorySource.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>

#include <atomic>
#include <thread>

using namespace Widgets;

namespace {

constexpr const char *plant = R"(
<memorySignal id="10" name="Level" writable="true"/><memorySignal id="11" name="Fixed"/>
<memorySignal id="12" name="Tag" type="string" writable="true"/>
<archiverSource id="13" name="A" signal="10"/>
<window id="20" name="W" width="400" height="500">
<editBox id="21" name="asks" signal="10" x="10" y="10" width="160" height="40" confirm="true"/>
<editBox id="22" name="numpad" signal="10" x="10" y="60" width="160" height="40" keyboardOnClick="true"/>
<editBox id="23" name="keyboard" signal="12" x="10" y="110" width="160" height="40" keyboardOnClick="true"/>
<editBox id="24" name="refused" signal="11" x="10" y="160" width="160" height="40"/>
<checkBox id="25" name="refused too" signal="11" x="200" y="10" width="60" height="40"/>
<comboBox id="26" name="list" signal="10" x="200" y="60" width="160" height="40" confirm="true">
  <comboItem id="27" name="a" value="0"/><comboItem id="28" name="b" value="1"/></comboBox>
<chartHistory id="29" name="trend" x="10" y="210" width="380" height="280" legend="false">
  <chartGroup id="30" name="G"><chartTimeAxis id="31" name="X"/><chartSerie id="32" name="s" source="13"/>
  </chartGroup></chartHistory>
</window>)";

enum Removed { Element, Window };

/// Does not answer while it is told not to.
struct SlowArchive : Nodes::HistorySource
{
    Nodes::Result Read(Nodes::HistoryColumnBuilder &,
                       const std::atomic<bool> &isCancelled) const override
    {
        while (isHanging && !isCancelled)
            std::this_thread::yield();
        return {};
    }
    std::atomic<bool> isHanging{false};
};

} // namespace

/// Time goes on while the operator is asked: what asks may be gone before the answer.
class TestRemovedWhileAsking : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsWrittenAndNothingBreaks_data()
    {
        const Rows<unsigned, QString, int> row("id", "keys", "removed");
        for (const int removed : {Element, Window}) {
            const QByteArray what = removed == Element ? " without element" : " without window";
            row(QByteArray("question" + what).constData(), 21, "9", removed);
            row(QByteArray("numpad" + what).constData(), 22, "", removed);
            row(QByteArray("keyboard" + what).constData(), 23, "", removed);
            row(QByteArray("refusal" + what).constData(), 24, "9", removed);
            row(QByteArray("check box" + what).constData(), 25, "", removed);
            row(QByteArray("open list" + what).constData(), 26, "", removed);
            row(QByteArray("choice" + what).constData(), 26, "choose", removed);
            row(QByteArray("history" + what).constData(), 29, "", removed);
        }
    }

    void nothingIsWrittenAndNothingBreaks()
    {
        QFETCH(unsigned, id);
        QFETCH(QString, keys);
        QFETCH(int, removed);
        const auto archive = std::make_shared<SlowArchive>();
        RuntimeProject project(plant);
        (void)project.core.GetHistory().AddSource(10, archive);
        project.publish(10, 7.0);
        project.publish(11, 7.0);
        project.publish(12, "old");
        project.record({10, 12});
        const QPointer<WindowBasic> window =
            qobject_cast<WindowBasic *>(project.manager->createWindow(project.node(20)).widget);
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QPointer<QWidget> element;
        QPoint place;
        QPoint middle; // of the plot, on the screen
        for (const ProxyWidget *host : window->proxyScene()->getLayers().first()->getWidgets()) {
            if (host->getNodeLink().GetNodeId() != id)
                continue;
            element = host->widget();
            place = window->mapFromScene(host->sceneBoundingRect().center());
            if (auto *bar = element->findChild<ToolBarAxisX *>()) {
                bar->setTracking(false);
                const QWidget &key = *bar->widgetForAction(bar->actions().first());
                place =
                    window->mapFromScene(host->mapToScene(key.mapTo(element, key.rect().center())));
                const Plot &plot = *element->findChild<Plot *>();
                const QPoint centre = plot.mapTo(element, plot.rect().center());
                middle =
                    window->viewport()->mapToGlobal(window->mapFromScene(host->mapToScene(centre)));
                QTRY_VERIFY(!plot.waitBox()->isRunning());
            }
        }
        archive->isHanging = true;
        bool isRemoved = false;
        const auto remove = [&] {
            isRemoved = true;
            if (removed == Element)
                QVERIFY(project.node(20)->RemoveNode(id));
            else
                window->close();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
        const WhenShown<QDialog> remover([&](QDialog &dialog) {
            const QPointer<QDialog> open(&dialog);
            if (id == 29)
                QVERIFY((dialog.geometry().center() - middle).manhattanLength() <= 4);
            remove();
            if (!open)
                return;
            if (auto *field = open->findChild<QLineEdit *>())
                field->setText("5");
            if (auto *box = qobject_cast<QMessageBox *>(open); box && !box->buttons().isEmpty())
                box->button(QMessageBox::Ok)->click();
            else
                open->accept();
        });
        QTest::mouseClick(window->viewport(), Qt::LeftButton, {}, place);
        if (auto *box = qobject_cast<QComboBox *>(element)) {
            QTRY_VERIFY(box->view()->isVisible());
            box->view()->setCurrentIndex(box->model()->index(1, 0));
            if (keys.isEmpty())
                remove();
            else
                QTest::keyClick(window->viewport(), Qt::Key_Return);
        } else if (!keys.isEmpty()) {
            QTest::keyClicks(window->viewport(), keys);
            QTest::keyClick(window->viewport(), Qt::Key_Return);
        }
        QTRY_VERIFY(isRemoved && !element);
        QCoreApplication::processEvents();
        QVERIFY(project.recorded.isEmpty());
    }
};

QTEST_MAIN(TestRemovedWhileAsking)
#include "tst_removed_while_asking.moc"
