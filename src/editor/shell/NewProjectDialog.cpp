#include "editor/shell/NewProjectDialog.h"

#include "editor/workspace/KeyboardAccess.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace Editor {

namespace {

QString folderName(QString name)
{
    static const QRegularExpression unfit(QStringLiteral("[/\\\\:*?\"<>|\\x00-\\x1f]"));
    return name.replace(unfit, QStringLiteral("_")).trimmed();
}

/// The user's documents, or the home directory of one who has none.
QString usualPlace()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

} // namespace

NewProjectDialog::NewProjectDialog(QWidget *parent)
    : QDialog(parent),
      m_name(new QLineEdit(tr("Новый проект"), this)),
      m_place(new QLineEdit(usualPlace(), this)),
      m_verdict(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Новый проект"));
    m_name->setObjectName(QStringLiteral("name"));
    m_place->setObjectName(QStringLiteral("place"));
    m_name->selectAll();
    m_verdict->setWordWrap(true);
    m_verdict->setTextFormat(Qt::PlainText);
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Создать"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Отмена"));
    auto *browse = new QPushButton(tr("Обзор…"), this);
    auto *place = new QHBoxLayout;
    place->addWidget(m_place, 1);
    place->addWidget(browse);
    auto *form = new QFormLayout;
    form->addRow(tr("Название"), m_name);
    form->addRow(tr("Где создать"), place);
    m_place->setAccessibleName(tr("Где создать"));
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_verdict);
    layout->addStretch();
    layout->addWidget(m_buttons);
    setMinimumWidth(560);

    connect(browse, &QPushButton::clicked, this, &NewProjectDialog::browse);
    connect(m_name, &QLineEdit::textChanged, this, &NewProjectDialog::check);
    connect(m_place, &QLineEdit::textChanged, this, &NewProjectDialog::check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    KeyboardAccess::followLayouts(*this);
    check();
}

QString NewProjectDialog::name() const
{
    return m_name->text().trimmed();
}

QString NewProjectDialog::directory() const
{
    return QDir::cleanPath(m_place->text().trimmed() + QLatin1Char('/') + folderName(name()));
}

void NewProjectDialog::browse()
{
    const QString chosen =
        QFileDialog::getExistingDirectory(this, tr("Где создать проект"), m_place->text());
    if (!chosen.isEmpty())
        m_place->setText(chosen);
}

void NewProjectDialog::check()
{
    QString wrong;
    if (folderName(name()).isEmpty() || name().contains(QLatin1Char('/')))
        wrong = tr("Введите название без знака «/».");
    else if (m_place->text().trimmed().isEmpty())
        wrong = tr("Выберите каталог, в котором появится каталог проекта.");
    else if (QFileInfo::exists(directory() + QStringLiteral("/project.xml")))
        wrong = tr("В каталоге «%1» уже есть проект. Выберите другое название.").arg(directory());
    m_verdict->setText(wrong.isEmpty() ? tr("Будет создан каталог «%1».").arg(directory()) : wrong);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(wrong.isEmpty());
}

} // namespace Editor
