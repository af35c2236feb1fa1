#include "widgets/tools/ArchiverDBMgrDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/tools/CopyTargets.h"
#include "widgets/tools/FileTexts.h"
#include "widgets/tools/UniversalTableView.h"

#include "nodes/actions/kinds/actionArchiverDBMgr.h"
#include "nodes/archive/DatabaseFilesOf.h"
#include "nodes/system/systemCore.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

namespace Widgets {

namespace {

constexpr int numberWidth = 48;
constexpr int nameWidth = 230;
constexpr int sizeWidth = 130;

// With the data of this station: others on the machine have their own place.
QString settingsFile(const Nodes::BasicAction *node)
{
    const Nodes::systemCore *core = node ? node->GetCore() : nullptr;
    const QString name = QStringLiteral("config.json");
    return core ? QDir(QString::fromStdString(core->GetDataDirectory())).filePath(name) : name;
}

} // namespace

ArchiverDBMgrDialog::ArchiverDBMgrDialog(Nodes::BasicAction *node, const QString &name,
                                         QWidget *parent)
    : BasicDialog(parent),
      ConfiguratorWindow(this, QStringLiteral("ArchiveFiles"), settingsFile(node)),
      m_copy(node ? Nodes::NodesArray::CreateNodeCopy(node->GetNodeType(), node) : nullptr),
      m_node(dynamic_cast<Nodes::actionArchiverDBMgr *>(m_copy.get())),
      m_archivers(new UniversalTableView(this)),
      m_files(new UniversalTableView(this)),
      m_summary(new QLabel(this)),
      m_progress(new QProgressBar(this))
{
    setObjectName(name);
    setWindowTitle(QStringLiteral("Файлы архива"));
    resize(1100, 520);
    MakeLegible(*m_summary);
    m_summary->setWordWrap(true);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_progress->hide();
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(buildTables(), 1);
    layout->addWidget(m_summary);
    layout->addWidget(m_progress);
    layout->addWidget(buildTarget());
    layout->addWidget(buildButtons());
    connect(&m_copier, &FileCopier::progressed, this, [this](const QString &what, double share) {
        m_summary->setText(what);
        m_progress->setRange(0, share < 0 ? 0 : 1000);
        m_progress->setValue(int(share * 1000));
    });
    connect(&m_copier, &FileCopier::copied, this, &ArchiverDBMgrDialog::onCopied);
    connect(&m_copier, &FileCopier::finished, this, &ArchiverDBMgrDialog::onCopiesFinished);
    refresh();
}

ArchiverDBMgrDialog::~ArchiverDBMgrDialog()
{
    disconnect(&m_copier, &FileCopier::finished, this, nullptr);
    m_copier.end();
}

QWidget *ArchiverDBMgrDialog::buildTables()
{
    auto *tables = new QSplitter(this);
    for (UniversalTableView *table : {m_archivers, m_files}) {
        MakeLegible(*table);
        MakeLegible(*table->horizontalHeader());
        table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        table->verticalHeader()->setDefaultSectionSize(TouchSize);
        tables->addWidget(table);
    }
    tables->setStretchFactor(0, 1);
    tables->setStretchFactor(1, 2);
    tables->setSizes({390, 700});
    m_files->setDialog(this);
    connect(m_archivers, &UniversalTableView::showArchivatorFiles, this,
            &ArchiverDBMgrDialog::showFiles);
    connect(m_files, &UniversalTableView::listed, this, &ArchiverDBMgrDialog::onListed);
    return tables;
}

QWidget *ArchiverDBMgrDialog::buildTarget()
{
    auto *row = new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *caption = new QLabel(QStringLiteral("Копировать в:"), row);
    m_targets = new CopyTargets(defaultFolder(), row);
    MakeLegible(*caption);
    MakeLegible(*m_targets);
    m_targets->setMinimumHeight(TouchSize);
    layout->addWidget(caption);
    layout->addWidget(m_targets, 1);
    connect(m_targets, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ArchiverDBMgrDialog::updateControls);
    return row;
}

QPushButton *ArchiverDBMgrDialog::addButton(const QString &text, QBoxLayout &row)
{
    auto *button = new QPushButton(text, this);
    button->setAutoDefault(false);
    MakeTouchable(*button);
    row.addWidget(button);
    return button;
}

QWidget *ArchiverDBMgrDialog::buildButtons()
{
    auto *row = new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_refresh = addButton(QStringLiteral("Обновить"), *layout);
    layout->addStretch();
    m_cancel = addButton(QStringLiteral("Прервать"), *layout);
    m_copyButton = addButton(QStringLiteral("Копировать"), *layout);
    m_delete = addButton(QStringLiteral("Удалить…"), *layout);
    QPushButton *close = addButton(QStringLiteral("Закрыть"), *layout);
    connect(m_refresh, &QPushButton::clicked, this, &ArchiverDBMgrDialog::refresh);
    connect(m_cancel, &QPushButton::clicked, &m_copier, &FileCopier::cancel);
    connect(m_copyButton, &QPushButton::clicked, this, &ArchiverDBMgrDialog::copyFiles);
    connect(m_delete, &QPushButton::clicked, this, &ArchiverDBMgrDialog::deleteFiles);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    return row;
}

void ArchiverDBMgrDialog::refresh()
{
    const Nodes::NodesArray owners = hasProject() ? m_node->GetOwners() : Nodes::NodesArray();
    m_archivers->makeModel(owners, UniversalTableNodes, this);
    m_archivers->setColumnWidth(0, numberWidth);
    m_archivers->setColumnWidth(1, nameWidth);
    const bool isKept = owners.Contains(m_owner);
    showFiles(isKept ? m_owner : owners.empty() ? Nodes::NodeLink() : owners[0]);
    const UniversalTableSortModel &rows = *m_archivers->sortModel();
    for (int row = 0; row < rows.rowCount(); ++row) {
        const QModelIndex index = rows.index(row, 1);
        if (rows.itemAt(index)->getNodeLink() == m_owner)
            m_archivers->setCurrentIndex(index);
    }
}

void ArchiverDBMgrDialog::showFiles(const Nodes::NodeLink &owner)
{
    m_owner = owner;
    m_files->makeModel(owner, UniversalTableFiles, this);
}

void ArchiverDBMgrDialog::onListed()
{
    m_files->setColumnWidth(0, numberWidth);
    m_files->setColumnWidth(1, nameWidth);
    m_files->setColumnWidth(2, sizeWidth);
    connect(m_files->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ArchiverDBMgrDialog::updateControls);
    updateControls();
}

QStringList ArchiverDBMgrDialog::selectedFiles() const
{
    QStringList names;
    for (const UniversalTableItem *item : m_files->selectedItems())
        names << item->getInfoFile().name;
    return names;
}

void ArchiverDBMgrDialog::updateControls()
{
    if (!m_cancel)
        return; // still being built
    const bool isIdle = !m_copier.isRunning();
    const bool hasFiles = !m_files->selectedItems().isEmpty();
    m_refresh->setEnabled(isIdle);
    m_targets->setEnabled(isIdle);
    m_archivers->setEnabled(isIdle);
    m_files->setEnabled(isIdle);
    m_copyButton->setEnabled(isIdle && hasFiles && hasCopyTarget());
    m_delete->setEnabled(isIdle && hasFiles);
    m_cancel->setVisible(!isIdle);
    m_progress->setVisible(!isIdle);
    if (isIdle)
        describe();
}

void ArchiverDBMgrDialog::describe()
{
    if (!hasProject())
        return m_summary->setText(QStringLiteral("Проект не загружен."));
    quint64 total = 0;
    const auto &items = m_files->sortModel()->table()->getItems();
    for (const UniversalTableItem *item : items)
        total += item->getInfoFile().size;
    const QString directory =
        QString::fromStdString(Nodes::DatabaseFilesOf(m_owner).GetDirectory());
    m_summary->setText(directory.isEmpty()
                           ? QStringLiteral("Файлов здесь нет: архив ведётся на сервере.")
                           : QStringLiteral("Каталог %1 — файлов: %2, всего %3; выбрано: %4")
                                 .arg(directory)
                                 .arg(items.size())
                                 .arg(FileTexts::megabytes(total))
                                 .arg(m_files->selectedItems().size()));
}

// Without it nobody would be asked for rights, and there is no directory.
bool ArchiverDBMgrDialog::hasProject() const
{
    return m_node && m_node->GetCore();
}

QString ArchiverDBMgrDialog::defaultFolder() const
{
    return m_node ? QString::fromStdString(m_node->GetCopyFolder()) : QString();
}

QString ArchiverDBMgrDialog::copyTarget() const
{
    return m_targets->currentText();
}

bool ArchiverDBMgrDialog::hasCopyTarget() const
{
    return !m_targets->folder().isEmpty();
}

void ArchiverDBMgrDialog::setCopyTarget(const QString &folder)
{
    m_targets->choose(folder);
}

FileCopier::Copies ArchiverDBMgrDialog::makeCopies(QStringList &refusals) const
{
    FileCopier::Copies copies;
    QStringList targets;
    for (const QString &file : selectedFiles()) {
        const QString target = FileTexts::freePath(m_targets->folder(), file, targets);
        std::unique_ptr<Nodes::DatabaseCopy> copy;
        const Nodes::Result made =
            m_node->MakeCopy(m_owner, file.toStdString(), target.toStdString(), copy);
        if (!made) {
            refusals << file + QStringLiteral(": ") + FileTexts::reasonOf(made);
            continue;
        }
        targets << target;
        copies.push_back(std::move(copy));
    }
    return copies;
}

void ArchiverDBMgrDialog::copyFiles()
{
    if (!hasProject() || m_copier.isRunning() || !hasCopyTarget())
        return;
    m_copied.clear();
    m_refusals.clear();
    FileCopier::Copies copies = makeCopies(m_refusals);
    if (copies.empty())
        return tell(m_refusals, QStringLiteral("Файлы не скопированы:\n"));
    m_copier.start(std::move(copies));
    updateControls();
}

void ArchiverDBMgrDialog::onCopied(const Nodes::DatabaseCopy &copy, const Nodes::Result &result)
{
    m_node->ReportCopy(copy, result);
    if (result)
        m_copied << QString::fromStdString(copy.GetTo());
    else
        m_refusals << QFileInfo(QString::fromStdString(copy.GetFrom())).fileName() +
                          QStringLiteral(": ") + FileTexts::reasonOf(result);
}

void ArchiverDBMgrDialog::onCopiesFinished()
{
    if (m_isUserGone)
        return reject(); // the journal tells what came of it
    refresh();
    if (!m_copied.isEmpty())
        PlainMessageBox::tell(QMessageBox::Information, QStringLiteral("Копирование"),
                              QStringLiteral("Скопировано и проверено чтением:\n") +
                                  FileTexts::listOf(m_copied),
                              this);
    tell(m_refusals, QStringLiteral("Файлы не скопированы:\n"));
}

void ArchiverDBMgrDialog::deleteFiles()
{
    const QStringList files = selectedFiles();
    if (!hasProject() || files.isEmpty() || m_copier.isRunning())
        return;
    DialogRequest request;
    request.parent = this;
    auto *question = Dialogs::make<PlainMessageBox>(request);
    question->setQuestion(
        QStringLiteral("Удаление файлов"),
        files.size() == 1
            ? QStringLiteral("Удалить «%1»? Данные, которые в нём хранятся, будут потеряны.")
                  .arg(files.first())
            : QStringLiteral("Удалить файлы (%1)? Данные, которые в них хранятся, будут "
                             "потеряны.\n%2")
                  .arg(files.size())
                  .arg(FileTexts::listOf(files)),
        QStringLiteral("Удалить"));
    question->askFor([this, files] { deleteAll(files); });
}

void ArchiverDBMgrDialog::deleteAll(const QStringList &files)
{
    if (!hasProject())
        return;
    QStringList refusals;
    for (const QString &file : files) {
        const Nodes::Result deleted = m_node->DeleteFile(m_owner, file.toStdString());
        if (!deleted)
            refusals << file + QStringLiteral(": ") + FileTexts::reasonOf(deleted);
    }
    refresh();
    tell(refusals, QStringLiteral("Файлы не удалены:\n"));
}

void ArchiverDBMgrDialog::tell(const QStringList &refusals, const QString &what)
{
    if (!refusals.isEmpty())
        PlainMessageBox::tell(QMessageBox::Warning, QStringLiteral("Ошибка"),
                              what + FileTexts::listOf(refusals), this);
}

void ArchiverDBMgrDialog::done(int result)
{
    if (m_copier.isRunning()) {
        disconnect(&m_copier, &FileCopier::finished, this, nullptr); // nobody is left to be told
        m_copier.end();
    }
    BasicDialog::done(result);
}

void ArchiverDBMgrDialog::onUserChanged()
{
    m_isUserGone = true;
    if (!m_copier.isRunning())
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
