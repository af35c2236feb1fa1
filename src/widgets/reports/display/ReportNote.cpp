#include "widgets/reports/display/ReportNote.h"

namespace Widgets {

namespace {

constexpr int longest = 240; // characters

} // namespace

ReportNote::ReportNote(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("note"));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    hide();
}

void ReportNote::warn(const QString &text)
{
    setStyleSheet(QStringLiteral("background: #fff1c2; color: #20262c; font-size: 15px;"
                                 " padding: 8px; border-bottom: 1px solid #a9b0b6;"));
    show(text.isEmpty() ? text : QStringLiteral("⚠ ") + text, text);
}

void ReportNote::tell(const QString &text)
{
    setStyleSheet(QStringLiteral("background: #f4f6f7; color: #20262c; font-size: 15px;"
                                 " padding: 8px; border-bottom: 1px solid #a9b0b6;"));
    show(text, text);
}

void ReportNote::show(const QString &text, const QString &details)
{
    QString line = text;
    line.replace(QLatin1Char('\n'), QStringLiteral("; "));
    if (line.size() > longest)
        line = line.left(longest) + QStringLiteral("…");
    setText(line);
    setToolTip(details);
    setVisible(!line.isEmpty());
}

} // namespace Widgets
