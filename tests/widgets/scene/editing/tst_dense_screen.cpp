// Editing a scene on a screen of one and a half pixels for each of the scene's.
#include "support/ShownEditor.h"

#include "widgets/scene/editing/CornerGrabber.h"
#include "widgets/scene/editing/Locker.h"

#include <QGraphicsPixmapItem>

namespace {

// Before Qt looks for it.
const bool isDense = [] {
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    return qputenv("QT_SCALE_FACTOR", "1.5");
}();

constexpr const char *nodes = R"(
<composition id="30" name="C" width="640" height="480"><layer id="31" name="L">
  <label id="32" name="A" x="100" y="80" width="100" height="40" movable="false"/></layer>
</composition>)";

} // namespace

class DenseScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(isDense && qApp->devicePixelRatio() == 1.5); }

    void theLockFillsItsPlace()
    {
        const ShownEditor editor(nodes);
        Widgets::Locker *locker = editor.host(32)->locker();
        for (const bool isLocked : {true, false}) {
            locker->setLock(isLocked);
            const auto *picture =
                qgraphicsitem_cast<QGraphicsPixmapItem *>(locker->childItems().value(0));
            QVERIFY(picture);
            const QPixmap shown = picture->pixmap();
            QCOMPARE(QSizeF(shown.size()) / shown.devicePixelRatioF(),
                     QSizeF(locker->width(), locker->height()));
            QVERIFY(shown.width() > locker->width()); // dense itself
        }
    }

    void grabbersAreWhereTheyAreSeen()
    {
        ShownEditor editor(nodes);
        editor.select({32});
        const QPointF corner(200, 120);
        editor.view.setBackgroundBrush(Qt::yellow);
        const QImage picture = editor.view.viewport()->grab().toImage();
        const QPoint seen = (QPointF(editor.view.mapFromScene(corner)) * 1.5).toPoint();
        QCOMPARE(picture.pixelColor(seen), QColor(Qt::white));
        editor.drag(corner, corner + QPointF(30, 20));
        QCOMPARE(editor.place(32), QRect(100, 80, 130, 60));
    }
};

QTEST_MAIN(DenseScreenTest)
#include "tst_dense_screen.moc"
