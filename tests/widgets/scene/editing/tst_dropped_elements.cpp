// What a drop on a scene makes: instances of templates, pictures out of files of the desktop.
#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/ShownEditor.h"

#include "widgets/scene/editing/drops/PictureImport.h"

#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/BasicProperty.h"
#include "utils/files/ResourceFiles.h"

#include <QGraphicsSceneDragDropEvent>
#include <QImage>
#include <QUrl>

using namespace Widgets;

namespace {

constexpr const char *screen = R"(
<windowTemplate id="10" name="Pump" width="200" height="100"/><folder id="11" name="F"/>
<composition id="30" name="C" width="800" height="600"><layer id="31" name="l"/></composition>)";

const QByteArray tank =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><rect width="9" height="9"/></svg>)";

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size())
        qFatal("%s", qPrintable(path));
}

QByteArray picture(int width, int height, const char *format = "PNG")
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}

struct Desktop
{
    Desktop() { shown.project.node(30)->GetNodesCollection()->SetDirectory(dir("project")); }
    std::string dir(const char *name) const { return root.filePath(name).toStdString(); }
    QString put(const QString &path, const QByteArray &bytes) const
    {
        write(root.filePath(path), bytes);
        return root.filePath(path);
    }
    void drop(const QMimeData &data, QPointF at = {400, 300})
    {
        QGraphicsSceneDragDropEvent enter(QEvent::GraphicsSceneDragMove);
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        for (QGraphicsSceneDragDropEvent *event : {&enter, &drop}) {
            event->setMimeData(&data);
            event->setScenePos(at);
            event->setAccepted(false);
            QApplication::sendEvent(shown.scene, event);
        }
        isTaken = drop.isAccepted();
    }
    void dropFiles(const QStringList &files)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &file : files)
            urls << QUrl::fromLocalFile(file);
        data.setUrls(urls);
        drop(data);
    }
    /// Each new element as "kind name property".
    QStringList made(const char *key) const
    {
        QStringList made;
        for (const auto &child : shown.project.node(31)->Children()) {
            const auto *property = child->GetKind()->FindProperty(std::string_view(key));
            made << QString::fromStdString(
                child->GetKind()->key + ' ' + child->GetName() + ' ' +
                (property ? child->GetPropertyByValueId(property->valueId)->ToString() : ""));
        }
        return made;
    }

    QTemporaryDir root;
    ShownEditor shown{screen};
    bool isTaken = false;
};

} // namespace

class TestDroppedElements : public QObject
{
    Q_OBJECT

private slots:
    void aTemplateBecomesAnInstance()
    {
        Desktop desktop;
        desktop.drop(*draggedTexts("application/nodelink", {"10"}));
        QCOMPARE(desktop.made("template"), QStringList{"instance Pump 10"});
        const auto *instance =
            dynamic_cast<Nodes::BasicWidget *>(desktop.shown.project.node(31)->GetNodeAt(0));
        QCOMPARE(instance->GetGeometry().width, 200);
        QCOMPARE(instance->GetPosition().x, 300); // centred on the pointer
        desktop.shown.stack.undo();
        QVERIFY(desktop.made("template").isEmpty());
        desktop.drop(*draggedTexts("application/nodelink", {"11"}));
        QVERIFY(!desktop.isTaken && desktop.made("template").isEmpty());
    }

    void filesBecomePictures_data()
    {
        const Rows<QString, QByteArray, QString, QString> row("file", "bytes", "made", "refusal");
        row("a picture", "a/План.png", picture(60, 40), "image План images/План.png", "");
        row("a vector picture", "a/бак.svg", tank, "symbol бак images/бак.svg", "");
        row("in the project already", "project/own/p.png", picture(9, 9), "image p own/p.png", "");
        row("damaged", "a/x.png", picture(60, 40).left(30), "", "это не рисунок");
        row("damaged vectors", "a/x.svg", tank.left(60), "", "это не рисунок");
        row("no picture", "a/x.txt", "text", "", "это не рисунок");
        row("empty", "a/x.bmp", "", "", "это не рисунок");
        row("too large", "a/x.png", QByteArray(Utils::ResourceFiles::MaximumSize + 1, 'x'), "",
            "50 МБ");
    }
    void filesBecomePictures()
    {
        QFETCH(QString, made);
        QFETCH(QString, refusal);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, file);
        Desktop desktop;
        const MessageBoxes boxes;
        const QString path = desktop.put(file, bytes);
        desktop.dropFiles({path});
        const char *key = made.startsWith("symbol") ? "source" : "image";
        QCOMPARE(desktop.made(key), made.isEmpty() ? QStringList() : QStringList{made});
        QTRY_COMPARE(boxes.shown.size(), refusal.isEmpty() ? 0 : 1); // told after the drop
        QVERIFY(QFile::exists(path));
        const QDir images(desktop.root.filePath("project/images"));
        QCOMPARE(images.exists(), made.contains("images/"));
        const PictureImport::Imported again =
            PictureImport::take(path, desktop.root.filePath("project"));
        QVERIFY2(again.refusal.contains(refusal), qPrintable(again.refusal));
        QCOMPARE(again.refusal.isEmpty(), refusal.isEmpty());
        QVERIFY(images.entryList(QDir::Files).size() <= 1); // one of that content is there
    }

    void anotherOfThatNameGetsANumber()
    {
        Desktop desktop;
        desktop.dropFiles(
            {desktop.put("a/p.png", picture(9, 9)), desktop.put("b/p.png", picture(2000, 1000))});
        QCOMPARE(desktop.made("image"),
                 (QStringList{"image p images/p.png", "image p 1 images/p-2.png"}));
        QCOMPARE(desktop.made("width")[0], QString("image p 9"));
        QCOMPARE(desktop.made("width")[1], QString("image p 1 640")); // as much as is seen at once
        QCOMPARE(desktop.made("height")[1], QString("image p 1 320"));
    }

    void whatCannotBeEditedCopiesNothing()
    {
        Desktop desktop;
        Utils::IUndo::setGate([] { return false; });
        desktop.dropFiles({desktop.put("a/p.png", picture(9, 9))});
        Utils::IUndo::setGate({});
        QVERIFY(desktop.isTaken && desktop.made("image").isEmpty());
        QVERIFY(!QFile::exists(desktop.root.filePath("project/images/p.png")));
        QVERIFY(PictureImport::take(desktop.root.filePath("a/p.png"), "")
                    .refusal.contains("Сохраните проект"));
    }
};

QTEST_MAIN(TestDroppedElements)
#include "tst_dropped_elements.moc"
