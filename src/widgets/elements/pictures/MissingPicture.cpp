#include "widgets/elements/pictures/MissingPicture.h"

#include "widgets/context/ActionSink.h"
#include "widgets/context/SceneContext.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"

#include <QFileInfo>
#include <QPainter>
#include <QSet>

namespace Widgets {

namespace {

std::string reason(const Nodes::ResourceLink &picture)
{
    const std::string path = picture.GetFullFilePath();
    if (path.empty())
        return "файл лежит вне каталога проекта, или туда ведёт символическая ссылка. Перенесите "
               "его в каталог проекта.";
    if (!QFileInfo::exists(QString::fromStdString(path)))
        return "нет такого файла. Добавьте файл или выберите другой.";
    return "файл повреждён, слишком велик или неизвестного формата. Замените файл.";
}

bool isFirst(const Nodes::ResourceLink &picture)
{
    static QSet<QString> told;
    const QString key = QString::fromStdString(Nodes::ResourceLink::GetBaseDirectory() + '\n' +
                                               picture.GetFilePath());
    const bool isNew = !told.contains(key);
    told.insert(key);
    return isNew;
}

constexpr int captionFlags = int(Qt::AlignCenter) | Qt::TextWordWrap;

/// As many words from the front as there is room for; of one line as much of both ends.
QString fitting(const QString &caption, const QFontMetrics &metrics, const QSize &room)
{
    if (room.height() < 2 * metrics.lineSpacing())
        return metrics.elidedText(caption, Qt::ElideMiddle, room.width());
    const auto fits = [&](const QString &text) {
        const QSize needed = metrics.boundingRect(QRect(QPoint(), room), captionFlags, text).size();
        return needed.width() <= room.width() && needed.height() <= room.height();
    };
    if (fits(caption))
        return caption;
    QStringList words = caption.split(' ');
    while (words.size() > 1) {
        words.removeLast();
        const QString text = words.join(' ') + QChar(0x2026);
        if (fits(text))
            return text;
    }
    return metrics.elidedText(caption, Qt::ElideMiddle, room.width());
}

} // namespace

void MissingPicture::report(const SceneContext &context, const Nodes::ConfigNode &node,
                            const Nodes::ResourceLink &picture)
{
    if (!context.isRuntime() || !isFirst(picture))
        return;
    context.actions().journalOnce(node, "Рисунок «" + picture.GetFilePath() +
                                            "» не показан: " + reason(picture));
}

void MissingPicture::draw(const SceneContext &context, QPainter &painter, const QRect &rect,
                          const Nodes::ResourceLink &picture)
{
    if (context.isEditor())
        drawPlaceholder(painter, rect,
                        QFileInfo(QString::fromStdString(picture.GetFilePath())).fileName());
}

void MissingPicture::drawPlaceholder(QPainter &painter, const QRect &rect, const QString &caption)
{
    if (rect.isEmpty())
        return;
    painter.save();
    painter.fillRect(rect, QColor(236, 238, 240));
    const QRectF frame = QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(QColor(120, 126, 132), 1, Qt::DashLine));
    painter.drawRect(frame);
    painter.drawLine(frame.topLeft(), frame.bottomRight());
    painter.drawLine(frame.topRight(), frame.bottomLeft());
    QFont font = painter.font();
    font.setPixelSize(11);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const QRect room = rect.adjusted(2, 1, -2, -1);
    const QString text = fitting(caption, metrics, room.size());
    QRect plate = metrics.boundingRect(room, captionFlags, text).adjusted(-2, -1, 2, 1);
    painter.fillRect(plate & rect, QColor(255, 255, 255, 230));
    painter.setPen(QColor(32, 36, 40));
    painter.drawText(room, captionFlags, text);
    painter.restore();
}

} // namespace Widgets
