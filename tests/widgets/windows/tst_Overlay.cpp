#include "support/RuntimeProject.h"

#include "widgets/windows/desktop/OverlayWidget.h"
#include "widgets/windows/desktop/OverlayWindows.h"
#include "widgets/windows/frames/FrameDialog.h"
#include "widgets/windows/frames/FrameWidget.h"
#include "widgets/windows/frames/FrameWindow.h"

using namespace Widgets;

class OverlayTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void dimsAllButTheModal();
    void followsNestedModals();
    void windowModalDimsItsOwnersOnly();
    void dimsEmbeddedFrameOnce();
    void dimsFramesShownLaterAndStaysOnTop();
    void staysClearOutsideRuntime();

private:
    std::unique_ptr<RuntimeProject> m_project;
    std::unique_ptr<FrameWidget> m_frame;
    std::unique_ptr<FrameWindow> m_modal;
};

void OverlayTest::init()
{
    m_project = std::make_unique<RuntimeProject>(
        R"(<visualization id="2" name="V" overlayColor="#102030"/>)");
    m_frame = std::make_unique<FrameWidget>();
    m_frame->resize(300, 200);
    m_frame->show();
    m_modal = std::make_unique<FrameWindow>();
    m_modal->setAttribute(Qt::WA_DeleteOnClose, false);
    m_modal->setWindowModality(Qt::ApplicationModal);
}

void OverlayTest::cleanup()
{
    m_modal.reset();
    m_frame.reset();
    m_project.reset();
}

void OverlayTest::dimsAllButTheModal()
{
    FrameWindow other;
    other.show();
    QVERIFY(!m_frame->overlay());
    m_modal->show();
    QVERIFY(!m_modal->overlay());
    QVERIFY(other.overlay() && other.overlay()->isVisible());
    QVERIFY(m_frame->overlay() && m_frame->overlay()->isVisible());
    QCOMPARE(m_frame->overlay()->color(), QColor(0x10, 0x20, 0x30));
    QCOMPARE(m_frame->grab().toImage().pixelColor(150, 100), QColor(0x10, 0x20, 0x30));

    m_frame->resize(420, 260);
    QCOMPARE(m_frame->overlay()->geometry(), QRect(0, 0, 420, 260));
    m_modal->close();
    QVERIFY(!m_frame->overlay() && !other.overlay());
}

void OverlayTest::followsNestedModals()
{
    m_modal->show();
    FrameDialog inner;
    inner.setModal(true);
    inner.show();
    QCOMPARE(OverlayWindows::instance().currentModal(), &inner);
    QVERIFY(m_modal->overlay());
    inner.accept();
    QCOMPARE(OverlayWindows::instance().currentModal(), m_modal.get());
    QVERIFY(!m_modal->overlay());
    QVERIFY(m_frame->overlay());

    const QSignalSpy changes(&OverlayWindows::instance(), &OverlayWindows::changed);
    m_modal.reset(); // destroyed, and not closed before
    QCOMPARE(changes.count(), 1);
    QVERIFY(!OverlayWindows::instance().currentModal());
    QVERIFY(!m_frame->overlay());
}

void OverlayTest::windowModalDimsItsOwnersOnly()
{
    FrameWindow owner(m_frame.get());
    FrameWindow sibling(m_frame.get());
    FrameWindow other;
    FrameDialog dialog(&owner);
    dialog.setWindowModality(Qt::WindowModal);
    for (QWidget *window : {&owner, &sibling, &other})
        window->show();
    dialog.show();
    QVERIFY(owner.overlay() && m_frame->overlay());
    QVERIFY(!sibling.overlay() && !other.overlay());
}

void OverlayTest::dimsEmbeddedFrameOnce()
{
    FrameWindow decorated;
    auto *embedded = new FrameWidget;
    decorated.setWidget(embedded);
    decorated.show();
    m_modal->show();
    QVERIFY(decorated.overlay());
    QVERIFY(!embedded->overlay());
}

void OverlayTest::dimsFramesShownLaterAndStaysOnTop()
{
    m_modal->show();
    FrameWindow late;
    late.show();
    QVERIFY(late.overlay());
    const QWidget added(&late);
    QEvent activated(QEvent::WindowActivate);
    QApplication::sendEvent(&late, &activated);
    QCOMPARE(late.children().last(), late.overlay());
}

void OverlayTest::staysClearOutsideRuntime()
{
    m_project->core.SetWorkMode(Nodes::WorkModeEditing);
    FrameWidget frame;
    frame.show();
    m_modal->show();
    QVERIFY(!frame.overlay());
    QVERIFY(m_frame->overlay()); // made at run time
}

QTEST_MAIN(OverlayTest)
#include "tst_Overlay.moc"
