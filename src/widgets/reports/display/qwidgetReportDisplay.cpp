#include "widgets/reports/display/qwidgetReportDisplay.h"

#include "widgets/charts/plots/WaitBox.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/reports/data/ReportModelTable.h"
#include "widgets/reports/data/ReportSetup.h"
#include "widgets/reports/display/ReportChoiceStore.h"
#include "widgets/reports/display/ReportNote.h"
#include "widgets/reports/display/ReportToolBar.h"
#include "widgets/reports/export/DataExport.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/reports/data/ReportQuestion.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"
#include "utils/convert/ValueConversions.h"

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPainter>
#include <QStackedWidget>
#include <QTimer>

#include <lrdatasourcemanagerintf.h>
#include <lrpreviewreportwidget.h>
#include <lrreportengine.h>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int readers = 2;                 // threads: more would only wait for the same disk
constexpr int longestReading = 15 * 60000; // ms

} // namespace

qwidgetReportDisplay::qwidgetReportDisplay(Nodes::widgetReportDisplay *node, QWidget *parent,
                                           const SceneContextPtr &context)
    : QWidget(parent), IWidget(node, context), m_display(node)
{
    m_pool.setMaxThreadCount(readers);
    build();
    m_binding.bind(this, node);
    qwidgetReportDisplay::onUpdateProperties(nullptr);
    if (node)
        setGeometry(Utils::NRectToQRect(node->GetGeometry()));
}

// The models end their reading, then the threads are waited for.
qwidgetReportDisplay::~qwidgetReportDisplay()
{
    dropModels();
    delete m_preview;
    m_engine.reset();
    m_pool.clear();
    m_pool.waitForDone();
}

void qwidgetReportDisplay::build()
{
    m_toolBar = new ReportToolBar(this);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_toolBar);
    if (!isRuntime()) {
        auto *sheet = new QWidget(this);
        sheet->setObjectName(QStringLiteral("sheet"));
        sheet->setStyleSheet(QStringLiteral("background: white;"));
        column->addWidget(sheet, 1);
        return;
    }
    m_note = new ReportNote(this);
    m_body = new QStackedWidget(this);
    m_missing = new QLabel(m_body);
    m_missing->setObjectName(QStringLiteral("missing"));
    m_missing->setAlignment(Qt::AlignCenter);
    m_missing->setWordWrap(true);
    m_missing->setTextFormat(Qt::PlainText);
    m_missing->setStyleSheet(
        QStringLiteral("background: #ffffff; color: #20262c; font-size: 16px; padding: 32px;"));
    m_engine = std::make_unique<LimeReport::ReportEngine>();
    m_engine->setShowProgressDialog(false);
    m_preview = m_engine->createPreviewWidget(m_body);
    m_body->addWidget(m_preview);
    m_body->addWidget(m_missing);
    column->addWidget(m_note);
    column->addWidget(m_body, 1);
    m_waitBox = new WaitBox(this);
    m_waitBox->setTimeLimit(longestReading);
    connectToolBar();
    connectEngine();
}

void qwidgetReportDisplay::connectToolBar()
{
    using Preview = LimeReport::PreviewReportWidget;
    connect(m_toolBar->generate, &QAction::triggered, this, &qwidgetReportDisplay::generate);
    connect(m_toolBar->reports, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &qwidgetReportDisplay::onCurrentReportChanged);
    connect(m_toolBar->interval, &QAction::triggered, this, &qwidgetReportDisplay::askInterval);
    connect(m_toolBar->print, &QAction::triggered, m_preview, &Preview::print);
    connect(m_toolBar->pdf, &QAction::triggered, this, &qwidgetReportDisplay::savePdf);
    connect(m_toolBar->prior, &QAction::triggered, m_preview, &Preview::priorPage);
    connect(m_toolBar->next, &QAction::triggered, m_preview, &Preview::nextPage);
    connect(m_toolBar->fitWidth, &QAction::triggered, m_preview, &Preview::fitWidth);
    connect(m_toolBar->fitPage, &QAction::triggered, m_preview, &Preview::fitPage);
    connect(m_toolBar->csv, &QAction::triggered, this, [this] { saveTable(false); });
    connect(m_toolBar->xlsx, &QAction::triggered, this, [this] { saveTable(true); });
    connect(m_toolBar->cancel, &QAction::triggered, this, &qwidgetReportDisplay::cancelWork);
}

void qwidgetReportDisplay::connectEngine()
{
    using Engine = LimeReport::ReportEngine;
    connect(m_engine.get(), &Engine::renderStarted, this, &qwidgetReportDisplay::onRenderStarted);
    connect(m_engine.get(), &Engine::renderFinished, this, &qwidgetReportDisplay::onRenderFinished);
    connect(m_preview, &LimeReport::PreviewReportWidget::outputFinished, this,
            &qwidgetReportDisplay::onOutputFinished);
    m_export = new DataExport(this);
    connect(m_export, &DataExport::progressed, this, [this](int percent) {
        m_toolBar->setProgress(QStringLiteral("Сохранено %1 %").arg(percent));
    });
    connect(m_export, &DataExport::finished, this, [this](const QString &error) {
        m_toolBar->setProgress(QString());
        onOutputFinished(error);
    });
    connect(m_engine.get(), &Engine::renderPageFinished, this,
            [this](int pages) { m_toolBar->setProgress(QStringLiteral("Листов: %1").arg(pages)); });
}

const PropertyBindings &qwidgetReportDisplay::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qwidgetReportDisplay>(Then::Repaint),
        PropertyRow::takes<&qwidgetReportDisplay::takeFrame>(Then::Repaint, Prop::BorderColor,
                                                             Prop::BorderWidth, Prop::Background),
        PropertyRow::takes<&qwidgetReportDisplay::takeReports>(Then::Nothing, Prop::Reports),
        // Reports have signals of their own.
        PropertyRow::only(Then::Nothing, Prop::Signal),
        PropertyRow::only(Then::Repaint, Prop::Disabled),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetReportDisplay::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetReportDisplay *display = m_display.get();
    if (display && takeOver(*display, property))
        update();
}

void qwidgetReportDisplay::takeFrame(const Nodes::widgetReportDisplay &node)
{
    takeBorder(node);
    takeBackground(node);
    const int width = std::max(m_borderWidth, 0);
    layout()->setContentsMargins(width, width, width, width);
}

// The chosen report stays chosen while it is among them.
void qwidgetReportDisplay::takeReports(const Nodes::widgetReportDisplay &node)
{
    const Nodes::BasicReport *chosen = currentReport();
    QStringList names;
    int current = 0;
    m_reports.clear();
    for (const Nodes::BasicReport *report : node.GetReports()) {
        if (report == chosen)
            current = names.size();
        names << QString::fromStdString(report->GetName());
        m_reports.push_back(report->GetNodeLink());
    }
    m_toolBar->setReports(names, names.isEmpty() ? -1 : current);
    if (m_engine && currentReport() != chosen)
        onCurrentReportChanged(current);
}

Nodes::BasicReport *qwidgetReportDisplay::currentReport() const
{
    const int index = m_toolBar->reports->currentIndex();
    if (index < 0 || std::size_t(index) >= m_reports.size())
        return nullptr;
    return dynamic_cast<Nodes::BasicReport *>(m_reports[std::size_t(index)].GetNode());
}

void qwidgetReportDisplay::onCurrentReportChanged(int)
{
    const Nodes::systemCore *core = context().model();
    const Nodes::BasicReport *report = currentReport();
    if (!report || !core) {
        dropModels();
        return tellMissing(tr("Нет отчётов для показа."));
    }
    m_choice = ReportChoice();
    m_choice.period = report->GetPeriod();
    if (const std::optional<ReportChoice> kept = ReportChoiceStore(*core).load(*report))
        m_choice = *kept;
    if (isActive())
        generate();
}

bool qwidgetReportDisplay::loadTemplate(const Nodes::BasicReport &report)
{
    const QString path = ReportSetup::templatePath(report, *context().model());
    if (path.isEmpty()) {
        tellMissing(tr("У отчёта «%1» не задан шаблон.").arg(m_toolBar->reports->currentText()));
        return false;
    }
    if (!QFileInfo::exists(path)) {
        tellMissing(tr("Шаблон отчёта «%1» не найден: %2. Верните файл на место.")
                        .arg(m_toolBar->reports->currentText(), QDir::toNativeSeparators(path)));
        return false;
    }
    if (!m_engine->loadFromFile(path)) {
        tellMissing(tr("Шаблон отчёта не читается: %1\n%2")
                        .arg(QDir::toNativeSeparators(path), m_engine->lastError()));
        return false;
    }
    m_isLoaded = true;
    return true;
}

void qwidgetReportDisplay::dropModels()
{
    m_pending = 0;
    m_isLoaded = false;
    for (ReportModelTable *model : m_models) {
        model->disconnect(this);
        model->cancel();
        m_engine->dataManager()->removeModel(model->objectName());
    }
    m_models.clear();
}

void qwidgetReportDisplay::updateReport(bool fetch)
{
    const Nodes::BasicReport *report = currentReport();
    const Nodes::systemCore *core = context().model();
    if (!m_engine || !report || !core)
        return;
    dropModels();
    m_note->warn(QString());
    if (!loadTemplate(*report))
        return;
    const Nodes::ShiftPlan shifts = Nodes::shiftTable::PlanOf(core->GetNodesCollection());
    m_span = m_choice.spanAt(Nodes::Clock::Current().Now(), shifts);
    ReportSetup::setVariables(*m_engine, *report, *core, m_choice.period, m_span, m_variables);
    m_models = ReportSetup::addModels(*m_engine, *report, &m_pool);
    for (ReportModelTable *model : qAsConst(m_models)) {
        connect(model, &ReportModelTable::dataUpdated, this, &qwidgetReportDisplay::onDataUpdated);
        m_pending += fetch && isRuntime() ? 1 : 0;
    }
    showInterval();
    m_user = currentUser();
    if (m_pending == 0)
        return onValueUpdated(Nodes::SignalValue());
    // Pages of another report, interval or user are not to be taken for this one's.
    showText(tr("Чтение данных…"));
    QTimer::singleShot(0, this, &qwidgetReportDisplay::fetchData);
}

// One loop waits for the newest data, whoever began it.
void qwidgetReportDisplay::fetchData()
{
    Nodes::systemCore *core = context().model();
    if (m_pending == 0 || !core)
        return;
    Nodes::ReportOrder order;
    order.core = core;
    order.span = m_span;
    order.shifts = Nodes::shiftTable::PlanOf(core->GetNodesCollection());
    order.now = Nodes::Clock::Current().Now();
    for (ReportModelTable *model : qAsConst(m_models))
        model->fetch(order);
    setEnabled(false);
    const QPointer<qwidgetReportDisplay> alive(this);
    if (!m_waitBox->isRunning() && m_waitBox->exec() == QDialog::Rejected && alive)
        giveUp();
}

void qwidgetReportDisplay::onDataUpdated()
{
    if (--m_pending >= 1)
        return;
    m_waitBox->accept();
    endWaiting();
    onValueUpdated(Nodes::SignalValue());
}

void qwidgetReportDisplay::endWaiting()
{
    setEnabled(true);
    m_pending = 0;
}

// What the models hold is made into pages; values of a signal are none of its business.
void qwidgetReportDisplay::onValueUpdated(Nodes::SignalValue value)
{
    if (!m_isLoaded || !value.IsEmpty() || m_pending > 0)
        return;
    m_body->setCurrentWidget(m_preview);
    m_preview->refreshPages();
}

// Nothing is waited for then.
void qwidgetReportDisplay::tellMissing(const QString &text)
{
    m_isLoaded = false;
    endWaiting();
    if (m_waitBox->isRunning())
        m_waitBox->reject();
    showText(text);
}

void qwidgetReportDisplay::showText(const QString &text)
{
    m_toolBar->setHasPages(false);
    m_missing->setText(text);
    m_body->setCurrentWidget(m_missing);
}

void qwidgetReportDisplay::onRenderStarted()
{
    m_toolBar->setProgress(tr("Формируется…"));
}

void qwidgetReportDisplay::onRenderFinished()
{
    m_toolBar->setProgress(QString());
    if (m_body->currentWidget() != m_preview)
        return; // of one that was given up
    m_toolBar->setHasPages(m_engine->pageCount() > 0);
    QStringList wrong;
    wrong << ReportSetup::faults(m_models);
    if (!m_engine->lastError().isEmpty())
        wrong << tr("Отчёт показан с ошибками шаблона, сообщите о них наладчику: ") +
                     m_engine->lastError();
    wrong.removeAll(QString());
    m_note->warn(wrong.join(QLatin1Char('\n')));
}

void qwidgetReportDisplay::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
    m_userConnection = {};
    if (!on) {
        if (m_waitBox && m_waitBox->isRunning())
            m_waitBox->reject();
        return;
    }
    if (!m_engine)
        return;
    const Nodes::systemCore *core = context().model();
    if (Nodes::systemAuthentication *users = core ? core->GetSystemAuthentication() : nullptr) {
        m_userConnection = users->ConnectUserChanged([this](const Nodes::NodeLink &) {
            QMetaObject::invokeMethod(this, &qwidgetReportDisplay::onUserChanged,
                                      Qt::QueuedConnection);
        });
    }
    if (m_isLoaded && !(m_user == currentUser()))
        onUserChanged();
    else if (!m_isLoaded)
        generate();
}

void qwidgetReportDisplay::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_backgroundColor);
    ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
    if (m_display && m_display->isDisabled())
        ElementPainting::drawDisabledCover(painter, rect());
}

bool qwidgetReportDisplay::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QWidget::event(event);
}

} // namespace Widgets
