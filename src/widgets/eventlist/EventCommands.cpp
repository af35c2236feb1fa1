#include "widgets/eventlist/EventCommands.h"

#include "widgets/charts/export/ExportProgress.h"
#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/charts/own/OwnTrend.h"
#include "widgets/context/ActionSink.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/dialogs/SaveFileQuestion.h"
#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/WidgetEventSortModel.h"
#include "widgets/eventlist/WidgetEventView.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <QClipboard>
#include <QDate>
#include <QDir>
#include <QGuiApplication>

namespace Widgets {

EventCommands::EventCommands(WidgetEventView *view, WidgetEventSortModel *rows,
                             SceneContextPtr context, QWidget *element)
    : QObject(element),
      m_view(view),
      m_rows(rows),
      m_context(std::move(context)),
      m_element(element)
{
    connect(view, &WidgetEventView::activatedRow, this, &EventCommands::activate);
    connect(view, &WidgetEventView::menuAsked, this, &EventCommands::openMenu);
    connect(view, &WidgetEventView::copyAsked, this, &EventCommands::copy);
}

EventCommands::~EventCommands() = default;

Nodes::NodeLink EventCommands::sourceOf(int row) const
{
    return row >= 0 && row < m_rows->rowCount() ? m_rows->item(row).source().node
                                                : Nodes::NodeLink();
}

const Nodes::BasicSignal *EventCommands::signalOf(const Nodes::NodeLink &source)
{
    const Nodes::ConfigNode *node = source.GetNode();
    if (const auto *alarm = dynamic_cast<const Nodes::BasicAlarm *>(node))
        return alarm->GetSignal();
    return dynamic_cast<const Nodes::BasicSignal *>(node);
}

void EventCommands::activate(int row)
{
    if (!m_context->isRuntime())
        return;
    const Nodes::NodeLink source = sourceOf(row);
    if (source.isValid() && m_context->actions().canJump(source))
        m_context->actions().jump(source, m_element);
    else if (const Nodes::BasicSignal *signal = signalOf(source))
        OwnTrend::show({signal->GetNodeLink()});
    else
        emit detailsAsked();
}

void EventCommands::openMenu(int row, const QPoint &place)
{
    if (!m_context->isRuntime())
        return;
    auto *menu = new TouchMenu(m_element);
    const Nodes::NodeLink source = sourceOf(row);
    if (source.isValid() && m_context->actions().canJump(source))
        connect(menu->addAction(QStringLiteral("Показать источник на экране")), &QAction::triggered,
                this, [this, source] { m_context->actions().jump(source, m_element); });
    OwnTrend::fillMenu(*menu, signalOf(source));
    if (row >= 0) {
        connect(menu->addAction(QStringLiteral("Подробно")), &QAction::triggered, this,
                &EventCommands::detailsAsked);
        connect(menu->addAction(QStringLiteral("Копировать строки")), &QAction::triggered, this,
                &EventCommands::copy);
    }
    connect(menu->addAction(QStringLiteral("Сохранить показанное (CSV)…")), &QAction::triggered,
            this, &EventCommands::askExport);
    menu->openAt(place);
}

void EventCommands::copy() const
{
    QGuiApplication::clipboard()->setText(m_view->selectedText());
}

void EventCommands::askExport()
{
    if (isExporting() || !m_context->isRuntime())
        return;
    const QString day = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
    const SaveFileQuestion question{QStringLiteral("Сохранить события"),
                                    QStringLiteral("События %1.csv").arg(day),
                                    QStringLiteral("csv"), QStringLiteral("Таблица CSV (*.csv)")};
    const QPointer<EventCommands> self = this;
    const QString file = question.ask(TouchMenu::windowOf(m_element));
    if (self && !file.isEmpty())
        exportTo(file);
}

void EventCommands::exportTo(const QString &file)
{
    const Nodes::systemCore *model = m_context->model();
    m_export = new EventCsvExport(m_rows->events(), m_rows->rows(),
                                  model ? model->GetJournal().OpenReader() : nullptr, this);
    DialogRequest dialog;
    dialog.parent = TouchMenu::windowOf(m_element);
    m_progress = Dialogs::make<ExportProgress>(dialog);
    m_progress->setText(
        QStringLiteral("События сохраняются в файл %1").arg(QDir::toNativeSeparators(file)));
    connect(m_export, &EventCsvExport::progressed, m_progress, &ExportProgress::setPercent);
    connect(m_progress, &ExportProgress::cancelled, m_export, &EventCsvExport::cancel);
    connect(m_export, &EventCsvExport::finished, this,
            [this, file](const QString &error) { onExported(file, error); });
    m_progress->show();
    m_export->start(file);
}

void EventCommands::onExported(const QString &file, const QString &error)
{
    if (m_export)
        m_export->deleteLater();
    m_export.clear();
    const bool isCancelled = m_progress && !m_progress->isVisible();
    delete m_progress;
    QWidget *window = TouchMenu::windowOf(m_element);
    if (!isCancelled && error.isEmpty())
        PlainMessageBox::tell(QMessageBox::Information, QStringLiteral("Сохранение"),
                              QStringLiteral("Сохранено: ") + QDir::toNativeSeparators(file),
                              window);
    else if (!isCancelled)
        PlainMessageBox::tell(QMessageBox::Warning, QStringLiteral("Ошибка"), error, window);
    emit exported(error);
}

} // namespace Widgets
