#include "widgets/windows/loading/LoadDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/windows/loading/LoadReportTable.h"
#include "widgets/windows/loading/NodeLoadingThread.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QBoxLayout>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace Widgets {

namespace {

constexpr int showDelay = 250; // ms; a load that is faster shows no dialog
constexpr int spacing = 16;
constexpr QSize findingsSize(900, 480);

QString nameFromPath(const QString &file)
{
    const QFileInfo info(file);
    const QString folder = info.absoluteDir().dirName();
    return info.fileName() == QLatin1String("project.xml") && !folder.isEmpty()
               ? folder
               : info.completeBaseName();
}

} // namespace

LoadDialog::LoadDialog(const QString &path, QWidget *parent)
    : FrameDialog(parent), m_thread(new NodeLoadingThread(path, this))
{
    setWindowTitle(tr("Станция оператора"));
    build(nameFromPath(m_thread->file()));
    connect(m_thread, &NodeLoadingThread::progress, this,
            [this](int percent, const QString &stage) {
                m_progressBar->setValue(percent);
                m_stageLabel->setText(stage);
            });
    connect(m_thread, &NodeLoadingThread::loaded, this, &LoadDialog::onLoaded);
    connect(m_thread, &NodeLoadingThread::failed, this, &LoadDialog::onFailed);
}

LoadDialog::~LoadDialog() = default;

void LoadDialog::build(const QString &projectName)
{
    m_projectLabel = new QLabel(tr("Проект: %1").arg(projectName));
    m_projectLabel->setTextFormat(Qt::PlainText);
    m_stageLabel = new QLabel(tr("Чтение файла"));
    m_stageLabel->setTextFormat(Qt::PlainText);
    m_stageLabel->setWordWrap(true);
    m_progressBar = new QProgressBar;
    m_progressBar->setRange(0, 100);
    m_progressBar->setMinimumWidth(420);
    m_table = new LoadReportTable;
    m_table->hide();
    m_continueButton = new QPushButton(tr("Продолжить"));
    m_continueButton->hide();
    m_closeButton = new QPushButton(tr("Отмена"));
    for (QPushButton *button : {m_continueButton, m_closeButton})
        MakeTouchable(*button);
    connect(m_continueButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_closeButton, &QPushButton::clicked, this, &LoadDialog::reject);

    MakeLegible(*m_projectLabel);
    MakeLegible(*m_stageLabel);
    MakeLegible(*m_table);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_continueButton);
    buttons->addWidget(m_closeButton);
    auto *column = new QVBoxLayout(content());
    column->setContentsMargins(spacing, spacing, spacing, spacing);
    column->addWidget(m_projectLabel);
    column->addWidget(m_progressBar);
    column->addWidget(m_stageLabel);
    column->addWidget(m_table, 1);
    column->addLayout(buttons);
}

bool LoadDialog::load()
{
    QEventLoop loop;
    connect(this, &QDialog::finished, &loop, &QEventLoop::quit);
    if (m_showsProgress && !m_isUnattended)
        QTimer::singleShot(showDelay, &loop, [this] { show(); });
    m_thread->start();
    loop.exec();
    return result() == Accepted;
}

std::unique_ptr<Nodes::NodesCollection> LoadDialog::takeProject()
{
    return m_thread->takeProject();
}

QString LoadDialog::file() const
{
    return m_thread->file();
}

const Nodes::LoadReport &LoadDialog::report() const
{
    return m_thread->report();
}

const Nodes::Result &LoadDialog::loadResult() const
{
    return m_thread->result();
}

void LoadDialog::reject()
{
    if (!m_thread->isRunning()) {
        FrameDialog::reject();
        return;
    }
    m_isCancelled = true;
    m_thread->cancel();
    m_closeButton->setEnabled(false);
    m_stageLabel->setText(tr("Загрузка прерывается"));
}

void LoadDialog::onLoaded()
{
    const Nodes::LoadReport &found = report();
    if (m_isCancelled) {
        FrameDialog::reject();
        return;
    }
    if (found.empty() || m_isUnattended) {
        accept();
        return;
    }
    showFindings(tr("Проект загружен. Ошибок: %L1, замечаний: %L2. То, что отмечено ошибкой, "
                    "работать не будет; остальное можно запустить.")
                     .arg(found.GetCount(Nodes::LoadMessage::Error))
                     .arg(found.GetCount(Nodes::LoadMessage::Warning)),
                 true);
}

void LoadDialog::onFailed()
{
    if (m_isUnattended || m_isCancelled) {
        FrameDialog::reject();
        return;
    }
    showFindings(tr("Проект не загружен. Исправьте файл в указанном месте или восстановите его "
                    "предыдущую версию и запустите станцию снова."),
                 false);
}

void LoadDialog::showFindings(const QString &summary, bool mayContinue)
{
    m_progressBar->hide();
    m_stageLabel->setText(summary);
    m_table->setReport(report());
    m_table->show();
    m_continueButton->setVisible(mayContinue);
    m_closeButton->setText(tr("Закрыть"));
    MakeTouchable(*m_closeButton);
    m_closeButton->setEnabled(true);
    (mayContinue ? m_continueButton : m_closeButton)->setDefault(true);
    resize(findingsSize);
    show();
    raise();
    activateWindow();
}

} // namespace Widgets
