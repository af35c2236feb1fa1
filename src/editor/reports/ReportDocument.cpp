#include "editor/reports/ReportDocument.h"

#include "editor/project/ProjectSession.h"
#include "editor/reports/ReportColumns.h"
#include "editor/reports/ReportTemplateWriter.h"
#include "editor/wizard/ChoiceDialog.h"
#include "editor/wizard/NodeRecipe.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/data/BasicReportSource.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/values/Clock.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "widgets/reports/data/ReportSetup.h"
#include "widgets/reports/engine/lrdatasourcemanagerintf.h"
#include "widgets/reports/engine/lrpreviewreportwidget.h"
#include "widgets/reports/engine/lrreportengine.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSaveFile>
#include <QStandardItemModel>

namespace Editor {

namespace {

constexpr int sampleRows = 12;

QStandardItemModel *sampleModel(const Nodes::BasicReportSource &source)
{
    auto *model = new QStandardItemModel;
    QStringList keys;
    QStringList samples;
    for (const ReportColumn &column : reportColumns(source)) {
        keys << column.key;
        samples << column.sample;
        if (column.isMarked) {
            keys << column.key + QStringLiteral("_mark");
            samples << QString();
        }
    }
    model->setHorizontalHeaderLabels(keys);
    for (int row = 0; row < sampleRows; ++row) {
        QList<QStandardItem *> cells;
        for (const QString &sample : samples)
            cells << new QStandardItem(sample);
        model->appendRow(cells);
    }
    return model;
}

QPushButton *addButton(QHBoxLayout &bar, const QString &text, const char *name, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    button->setObjectName(QLatin1String(name));
    bar.addWidget(button);
    return button;
}

} // namespace

ReportDocument::ReportDocument(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent)
    : DocumentView(workspace, node, parent),
      m_note(new QLabel(this)),
      m_engine(new LimeReport::ReportEngine(this)),
      m_preview(m_engine->createPreviewWidget(this))
{
    m_note->setObjectName(QStringLiteral("note"));
    m_note->setWordWrap(true);
    m_note->setTextFormat(Qt::PlainText);
    auto *bar = new QHBoxLayout;
    connect(addButton(*bar, tr("Добавить сигналы…"), "addSignals", this), &QPushButton::clicked,
            this, &ReportDocument::addSignals);
    connect(addButton(*bar, tr("Сделать шаблон по источникам"), "makeTemplate", this),
            &QPushButton::clicked, this, &ReportDocument::makeTemplate);
    connect(addButton(*bar, tr("Обновить"), "refresh", this), &QPushButton::clicked, this,
            &ReportDocument::refresh);
    connect(addButton(*bar, tr("По ширине"), "fitWidth", this), &QPushButton::clicked, m_preview,
            &LimeReport::PreviewReportWidget::fitWidth);
    bar->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_note);
    layout->addWidget(m_preview, 1);
    if (Nodes::NodesCollection *project = node.GetNodesCollection())
        m_connection =
            project->ConnectChanged([this](const Nodes::NodeChange &) { refreshLater(); });
    m_preview->fitWidth();
    connect(m_engine, &LimeReport::ReportEngine::renderFinished, this, [this] {
        if (!m_engine->lastError().isEmpty())
            m_note->setText(tr("⚠ В шаблоне: %1").arg(m_engine->lastError()));
    });
    refresh();
}

ReportDocument::~ReportDocument() = default;

bool ReportDocument::shows(const Nodes::ConfigNode &node)
{
    return dynamic_cast<const Nodes::BasicReport *>(&node) != nullptr;
}

QString ReportDocument::note() const
{
    return m_note->text();
}

const Nodes::BasicReport *ReportDocument::report() const
{
    return dynamic_cast<const Nodes::BasicReport *>(node().GetNode());
}

QString ReportDocument::templateFile(const Nodes::BasicReport &report) const
{
    const QString path = QString::fromStdString(report.GetFilePath());
    return path.isEmpty() ? QString() : QDir(workspace().session().directory()).filePath(path);
}

// Pages are made while they are looked at: a tab behind another one would slow every edit there.
void ReportDocument::refreshLater()
{
    if (m_isStale)
        return;
    m_isStale = true;
    if (isVisible())
        QMetaObject::invokeMethod(this, &ReportDocument::refresh, Qt::QueuedConnection);
}

void ReportDocument::showEvent(QShowEvent *event)
{
    DocumentView::showEvent(event);
    if (m_isStale)
        refresh();
}

void ReportDocument::refresh()
{
    m_isStale = false;
    const Nodes::BasicReport *shown = report();
    m_preview->setVisible(false);
    if (!shown)
        return;
    const QString file = templateFile(*shown);
    if (file.isEmpty())
        return m_note->setText(
            shown->GetSources().empty()
                ? tr("У отчёта нет данных и шаблона: добавьте сигналы, затем сделайте шаблон.")
                : tr("У отчёта нет шаблона: сделайте его по источникам или выберите файл в "
                     "свойствах."));
    if (!m_engine->loadFromFile(file))
        return m_note->setText(
            tr("⚠ Шаблон «%1» не читается: %2").arg(file, m_engine->lastError()));
    m_note->setText(tr("Шаблон «%1». Значения ниже — пример, настоящие печатает станция.")
                        .arg(QString::fromStdString(shown->GetFilePath())));
    fill(*shown);
    m_preview->setVisible(true);
    m_engine->render();
}

void ReportDocument::fill(const Nodes::BasicReport &report)
{
    const Nodes::ShiftPlan shifts = Nodes::shiftTable::PlanOf(report.GetNodesCollection());
    const Nodes::ReportSpan span =
        Nodes::PeriodAt(report.GetPeriod(), Nodes::Clock::Current().Now(), shifts);
    Widgets::ReportSetup::setVariables(*m_engine, report, workspace().session().core(),
                                       report.GetPeriod(), span);
    for (const Nodes::BasicReportSource *source : report.GetSources())
        m_engine->dataManager()->addModel(QString::fromStdString(source->GetName()),
                                          sampleModel(*source), true);
}

void ReportDocument::addSignals()
{
    Nodes::NodeLinks found;
    workspace().session().project()->FindNodes(Nodes::NodeType::TypeSignal, &found);
    ChoiceDialog dialog(tr("Какие сигналы напечатать по часам"), found, true, this);
    if (dialog.exec() == QDialog::Accepted)
        addTable(dialog.chosen());
}

bool ReportDocument::addTable(const Nodes::NodeLinks &signalNodes)
{
    const Nodes::BasicReport *shown = report();
    if (!shown || signalNodes.empty())
        return false;
    QString name = QStringLiteral("table1");
    for (int n = 2; shown->GetSubObject(std::string_view(name.toStdString())); ++n)
        name = QStringLiteral("table%1").arg(n);
    NodeRecipe table(QStringLiteral("reportSummary"), name);
    table.set(QStringLiteral("rows"), QStringLiteral("hour"));
    for (std::size_t i = 0; i < signalNodes.size(); ++i) {
        // Templates ask for columns by these names, which have to be plain words.
        NodeRecipe column(QStringLiteral("reportSignal"), QStringLiteral("s%1").arg(i + 1));
        table.add(column.set(QStringLiteral("signal"), signalNodes[i]));
    }
    auto *command =
        new Utils::AddNodeLinkCommand(table.make(*workspace().session().project()), node());
    command->setText(tr("Таблица отчёта"));
    return workspace().push(command);
}

void ReportDocument::makeTemplate()
{
    const Nodes::BasicReport *shown = report();
    if (!shown)
        return;
    if (workspace().session().isReadOnly())
        return workspace().tell(
            Workspace::Warning,
            tr("Шаблон не сделан: %1.").arg(workspace().session().readOnlyReason()));
    if (shown->GetSources().empty())
        return workspace().tell(Workspace::Info,
                                tr("Сначала добавьте сигналы или другие источники данных."));
    const QDir directory(workspace().session().directory());
    QString base =
        QString::fromStdString(shown->GetName()).replace(QLatin1Char('/'), QLatin1Char('_'));
    QString path = QStringLiteral("reports/%1.lrxml").arg(base);
    for (int n = 2; directory.exists(path); ++n)
        path = QStringLiteral("reports/%1 (%2).lrxml").arg(base).arg(n);
    directory.mkpath(QStringLiteral("reports"));
    QSaveFile file(directory.filePath(path));
    const QByteArray text = ReportTemplateWriter::write(*shown).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        return workspace().tell(
            Workspace::Error,
            tr("Шаблон «%1» не записан: %2.").arg(file.fileName(), file.errorString()));
    auto *command = new Utils::ChangePropertyCommand(node(), Nodes::BasicReport::Prop::Template,
                                                     Nodes::ResourceLink(path.toStdString()));
    command->setText(tr("Шаблон отчёта"));
    if (workspace().push(command))
        workspace().tell(Workspace::Info, tr("Сделан шаблон «%1».").arg(path));
}

} // namespace Editor
