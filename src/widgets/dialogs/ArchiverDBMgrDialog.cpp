#include "widgets/dialogs/ArchiverDBMgrDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"

#include "nodes/actions/kinds/actionArchiverDBMgr.h"
#include "nodes/model/NodesArray.h"
#include "nodes/system/systemCore.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QStandardItemModel>
#include <QThread>
#include <QTreeView>
#include <QVBoxLayout>

namespace Widgets {

namespace {

enum Column { ColumnFile, ColumnSize, ColumnChanged, ColumnState, ColumnCount };
constexpr int SortRole = Qt::UserRole;

QStandardItem *makeItem(const QString &text, const QVariant &sortKey)
{
    auto *item = new QStandardItem(text);
    item->setData(sortKey, SortRole);
    item->setEditable(false);
    return item;
}

QString sizeText(quint64 bytes)
{
    static const QString units[] = {QStringLiteral("Б"), QStringLiteral("КБ"), QStringLiteral("МБ"),
                                    QStringLiteral("ГБ"), QStringLiteral("ТБ")};
    double amount = double(bytes);
    std::size_t unit = 0;
    for (; amount >= 1024 && unit + 1 < std::size(units); ++unit)
        amount /= 1024;
    return QLocale(QLocale::Russian).toString(amount, 'f', unit == 0 ? 0 : 1) + ' ' + units[unit];
}

QString reasonOf(const Nodes::Result &result)
{
    if (result == Nodes::Result::Refused)
        return QStringLiteral("Файл используется. Остановите того, кто его открыл, и повторите.");
    return QString::fromStdString(result.GetResultTranslated());
}

// With the data of this station: others on the machine have their own place.
QString settingsFile(const Nodes::BasicAction *node)
{
    const Nodes::systemCore *core = node ? node->GetCore() : nullptr;
    const QString name = QStringLiteral("config.json");
    return core ? QDir(QString::fromStdString(core->GetDataDirectory())).filePath(name) : name;
}

} // namespace

struct ArchiverDBMgrDialog::Copy
{
    std::string from;
    std::string to;
    Nodes::Result result;
};

ArchiverDBMgrDialog::ArchiverDBMgrDialog(Nodes::BasicAction *node, const QString &name,
                                         QWidget *parent)
    : BasicDialog(parent),
      ConfiguratorWindow(this, QStringLiteral("ArchiveFiles"), settingsFile(node)),
      m_copy(node ? Nodes::NodesArray::CreateNodeCopy(node->GetNodeType(), node) : nullptr),
      m_node(dynamic_cast<Nodes::actionArchiverDBMgr *>(m_copy.get())),
      m_model(new QStandardItemModel(this)),
      m_table(new QTreeView(this)),
      m_summary(new QLabel(this))
{
    setObjectName(name);
    setWindowTitle(QStringLiteral("Файлы архива"));
    resize(760, 420);
    buildTable();
    MakeLegible(*m_summary);
    m_summary->setWordWrap(true);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addWidget(m_summary);
    layout->addWidget(buildButtons());
    refresh();
}

ArchiverDBMgrDialog::~ArchiverDBMgrDialog()
{
    endCopy();
}

void ArchiverDBMgrDialog::buildTable()
{
    m_model->setHorizontalHeaderLabels({QStringLiteral("Файл"), QStringLiteral("Размер"),
                                        QStringLiteral("Изменён"), QStringLiteral("Состояние")});
    m_model->setSortRole(SortRole);
    m_table->setModel(m_model);
    MakeLegible(*m_table);
    MakeLegible(*m_table->header());
    m_table->setRootIsDecorated(false);
    m_table->setUniformRowHeights(true);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(ColumnFile, Qt::AscendingOrder);
    m_table->header()->setStretchLastSection(false);
    m_table->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->header()->setSectionResizeMode(ColumnFile, QHeaderView::Stretch);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ArchiverDBMgrDialog::updateButtons);
}

QWidget *ArchiverDBMgrDialog::buildButtons()
{
    auto *row = new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_refresh = new QPushButton(QStringLiteral("Обновить"), row);
    m_copyButton = new QPushButton(QStringLiteral("Копировать…"), row);
    m_delete = new QPushButton(QStringLiteral("Удалить…"), row);
    auto *close = new QPushButton(QStringLiteral("Закрыть"), row);
    connect(m_refresh, &QPushButton::clicked, this, &ArchiverDBMgrDialog::refresh);
    connect(m_copyButton, &QPushButton::clicked, this, &ArchiverDBMgrDialog::copySelected);
    connect(m_delete, &QPushButton::clicked, this, &ArchiverDBMgrDialog::deleteSelected);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    layout->addWidget(m_refresh);
    layout->addStretch();
    for (QPushButton *button : {m_copyButton, m_delete, close}) {
        button->setAutoDefault(false);
        layout->addWidget(button);
    }
    for (QPushButton *button : {m_refresh, m_copyButton, m_delete, close})
        MakeTouchable(*button);
    return row;
}

void ArchiverDBMgrDialog::addRow(const QString &path, quint64 size, qint64 changed, bool isInUse)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(changed / 1000);
    QList<QStandardItem *> row{
        makeItem(path, path), makeItem(sizeText(size), size),
        makeItem(time.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")), time),
        makeItem(isInUse ? QStringLiteral("Используется") : QStringLiteral("Свободен"), isInUse)};
    row[ColumnSize]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_model->appendRow(row);
}

void ArchiverDBMgrDialog::refresh()
{
    const QString selected = selectedFile();
    m_model->removeRows(0, m_model->rowCount());
    if (!hasProject())
        return updateButtons();
    const Nodes::DatabaseFiles files = m_node->GetFiles();
    quint64 total = 0;
    for (const Nodes::DatabaseFiles::File &file : files.List()) {
        addRow(QString::fromStdString(file.path), file.size, file.changed, file.isInUse);
        total += file.size;
    }
    m_table->sortByColumn(m_table->header()->sortIndicatorSection(),
                          m_table->header()->sortIndicatorOrder());
    const auto found = m_model->findItems(selected);
    if (!found.isEmpty())
        m_table->setCurrentIndex(found.first()->index());
    m_summary->setText(QStringLiteral("Каталог %1 — файлов: %2, всего %3")
                           .arg(QString::fromStdString(files.GetDirectory()))
                           .arg(m_model->rowCount())
                           .arg(sizeText(total)));
    updateButtons();
}

// Without it nobody would be asked for rights, and there is no directory.
bool ArchiverDBMgrDialog::hasProject() const
{
    return m_node && m_node->GetCore();
}

QString ArchiverDBMgrDialog::selectedFile() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows(ColumnFile);
    return rows.isEmpty() ? QString() : rows.first().data().toString();
}

void ArchiverDBMgrDialog::updateButtons()
{
    const QModelIndexList states = m_table->selectionModel()->selectedRows(ColumnState);
    const bool isIdle = !m_copying;
    m_refresh->setEnabled(isIdle);
    m_copyButton->setEnabled(isIdle && !states.isEmpty());
    m_delete->setEnabled(isIdle && !states.isEmpty() && !states.first().data(SortRole).toBool());
}

void ArchiverDBMgrDialog::tell(const Nodes::Result &result, const QString &what)
{
    if (!result)
        PlainMessageBox::tell(QMessageBox::Warning, QStringLiteral("Ошибка"),
                              what + '\n' + reasonOf(result), this);
}

void ArchiverDBMgrDialog::deleteSelected()
{
    const QString file = selectedFile();
    if (!hasProject() || file.isEmpty())
        return;
    DialogRequest request;
    request.parent = this;
    auto *question = Dialogs::make<PlainMessageBox>(request);
    question->setQuestion(
        QStringLiteral("Удаление файла"),
        QStringLiteral("Удалить «%1»? Данные, которые в нём хранятся, будут потеряны.").arg(file),
        QStringLiteral("Удалить"));
    question->askFor([this, file] { deleteFile(file); });
}

void ArchiverDBMgrDialog::deleteFile(const QString &file)
{
    if (!hasProject())
        return;
    tell(m_node->DeleteFile(file.toStdString()), QStringLiteral("Файл не удалён: ") + file);
    refresh();
}

void ArchiverDBMgrDialog::copySelected()
{
    const QString file = selectedFile();
    if (file.isEmpty())
        return;
    const QString target = QFileDialog::getSaveFileName(this, QStringLiteral("Куда копировать"),
                                                        QFileInfo(file).fileName(), QString(),
                                                        nullptr, QFileDialog::DontConfirmOverwrite);
    if (!target.isEmpty())
        copySelectedTo(target);
}

void ArchiverDBMgrDialog::copySelectedTo(const QString &target)
{
    const std::string from = selectedFile().toStdString();
    if (!hasProject() || from.empty() || m_copying)
        return;
    if (const Nodes::Result access = m_node->Demand(); !access)
        return tell(access, QStringLiteral("Файл не скопирован: ") + selectedFile());
    m_isCancelled = false;
    m_copyTask = std::make_unique<Copy>(Copy{from, target.toStdString(), {}});
    m_copying = QThread::create([this, files = m_node->GetFiles(), task = m_copyTask.get()] {
        task->result = files.Copy(task->from, task->to, m_isCancelled);
    });
    connect(m_copying, &QThread::finished, this, &ArchiverDBMgrDialog::finishCopy);
    m_summary->setText(QStringLiteral("Копируется «%1»…").arg(selectedFile()));
    updateButtons();
    m_copying->start();
}

void ArchiverDBMgrDialog::finishCopy()
{
    if (!m_copying)
        return;
    endCopy();
    if (m_isUserGone)
        return reject(); // the journal tells what came of it
    refresh();
    const Copy &task = *m_copyTask;
    if (task.result)
        PlainMessageBox::tell(QMessageBox::Information, QStringLiteral("Копирование"),
                              QStringLiteral("Файл скопирован: ") + QString::fromStdString(task.to),
                              this);
    tell(task.result, QStringLiteral("Файл не скопирован: ") + QString::fromStdString(task.from));
}

void ArchiverDBMgrDialog::endCopy()
{
    if (!m_copying)
        return;
    m_isCancelled = true;
    m_copying->wait();
    m_copying->deleteLater();
    m_copying = nullptr;
    m_node->ReportCopy(m_copyTask->from, m_copyTask->to, m_copyTask->result);
}

void ArchiverDBMgrDialog::done(int result)
{
    endCopy();
    BasicDialog::done(result);
}

void ArchiverDBMgrDialog::onUserChanged()
{
    m_isUserGone = true;
    if (!m_copying)
        reject();
}

void ArchiverDBMgrDialog::showEvent(QShowEvent *event)
{
    QJsonObject kept;
    if (Configurator::load(kept) && !kept.isEmpty() && load())
        keepPlace();
    BasicDialog::showEvent(event);
}

void ArchiverDBMgrDialog::hideEvent(QHideEvent *event)
{
    (void)save();
    BasicDialog::hideEvent(event);
}

} // namespace Widgets
