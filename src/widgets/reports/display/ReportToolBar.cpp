#include "widgets/reports/display/ReportToolBar.h"

#include "widgets/dialogs/DialogLook.h"

#include <QAction>
#include <QComboBox>
#include <QIcon>
#include <QLabel>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

namespace Widgets {

namespace {

constexpr QSize iconPixels(24, 24);
constexpr int narrowestChoice = 240;

constexpr const char *look =
    "QToolBar { background: #e3e6e8; border: 0; border-bottom: 1px solid #a9b0b6; padding: 4px;"
    " spacing: 4px; }"
    "QToolButton { background: #f4f6f7; color: #20262c; border: 1px solid #8a949b;"
    " border-radius: 3px; min-width: 40px; min-height: 40px; padding: 0 8px; font-size: 15px; }"
    "QToolButton:hover { border-color: #37424b; }"
    "QToolButton:pressed { background: #b4bdc4; }"
    "QToolButton:disabled { background: #e3e6e8; color: #59636b; border-color: #c2c9ce; }"
    "QComboBox { background: #ffffff; color: #20262c; border: 1px solid #8a949b;"
    " border-radius: 3px; min-height: 40px; padding: 0 8px; font-size: 15px; }"
    "QLabel { color: #20262c; font-size: 15px; padding: 0 8px; }"
    "QToolBarExtension { min-width: 0; min-height: 0; }";

} // namespace

qwidgetReportDisplay::ReportToolBar::ReportToolBar(QWidget *parent) : QToolBar(parent)
{
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize(iconPixels);
    setToolButtonStyle(Qt::ToolButtonIconOnly); // one without an icon shows its text
    setCursor(Qt::ArrowCursor);
    setStyleSheet(QLatin1String(look));
    generate = addKey(QStringLiteral("Сформировать отчет"));
    reports = new QComboBox(this);
    reports->setObjectName(QStringLiteral("reports"));
    reports->setMinimumWidth(narrowestChoice);
    reports->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    reports->setItemDelegate(new QStyledItemDelegate(reports)); // heeds the items' size hints
    addWidget(reports);
    interval = addKey(QStringLiteral("hh.mm.ss - hh.mm.ss"));
    print = addKey(QStringLiteral("Печать отчета"), "print");
    pdf = addKey(QStringLiteral("Сохранение отчета в PDF"), "pdf");
    prior = addKey(QStringLiteral("Переход к предыдущему листу"), "chevron_left");
    next = addKey(QStringLiteral("Переход к следующему листу"), "chevron_right");
    fitWidth = addKey(QStringLiteral("Масштабирование по ширине листа"), "width");
    fitPage = addKey(QStringLiteral("Масштабирование по размеру листа"), "fit_to_width");
    csv = addKey(QStringLiteral("Сохранение данных в CSV"), "csv");
    xlsx = addKey(QStringLiteral("Сохранение данных в XLSX"), "xlsx");
    m_progress = new QLabel(this);
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progressPlace = addWidget(m_progress);
    cancel = addKey(QStringLiteral("Прервать"), "cancel");
    setProgress(QString());
    setHasPages(false);
}

QAction *qwidgetReportDisplay::ReportToolBar::addKey(const QString &text, const char *icon)
{
    QAction *key =
        icon ? addAction(QIcon(QStringLiteral(":/icons/reports/%1.svg").arg(QLatin1String(icon))),
                         text)
             : addAction(text);
    key->setToolTip(text);
    return key;
}

void qwidgetReportDisplay::ReportToolBar::setReports(const QStringList &names, int current)
{
    const QSignalBlocker blocker(reports);
    reports->clear();
    for (const QString &name : names) {
        reports->addItem(name);
        reports->setItemData(reports->count() - 1, QSize(TouchSize, TouchSize), Qt::SizeHintRole);
    }
    reports->setCurrentIndex(current);
    reports->setEnabled(!names.isEmpty());
    generate->setEnabled(!names.isEmpty());
    interval->setEnabled(!names.isEmpty());
}

void qwidgetReportDisplay::ReportToolBar::setInterval(const QString &text)
{
    interval->setText(text);
}

void qwidgetReportDisplay::ReportToolBar::setProgress(const QString &text)
{
    m_progress->setText(text);
    m_progressPlace->setVisible(!text.isEmpty());
    cancel->setVisible(!text.isEmpty());
}

void qwidgetReportDisplay::ReportToolBar::setHasPages(bool has)
{
    for (QAction *key : {print, pdf, prior, next, fitWidth, fitPage, csv, xlsx})
        key->setEnabled(has);
}

} // namespace Widgets
