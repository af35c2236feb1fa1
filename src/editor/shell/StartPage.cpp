#include "editor/shell/StartPage.h"

#include "editor/shell/ProjectFiles.h"
#include "editor/shell/RecentProjects.h"

#include "nodes/project/ProjectHold.h"
#include "nodes/project/RecoveryFile.h"

#include <QCommandLinkButton>
#include <QDateTime>
#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

namespace {

constexpr int pageWidth = 720;
constexpr std::size_t unsavedAtMost = 5;

QLabel *heading(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    label->setFont(font);
    return label;
}

void clear(QLayout &layout)
{
    while (QLayoutItem *item = layout.takeAt(0)) {
        if (QWidget *widget = item->widget())
            widget->deleteLater();
        delete item;
    }
}

} // namespace

StartPage::StartPage(ProjectFiles &files, const QString &recovery, QWidget *parent)
    : QWidget(parent),
      m_files(files),
      m_recovery(recovery),
      m_unsavedPart(new QWidget(this)),
      m_unsaved(new QVBoxLayout),
      m_recent(new QVBoxLayout)
{
    auto *made = new QCommandLinkButton(tr("Новый проект"),
                                        tr("Станция, сигналы и экраны с чистого листа"), this);
    auto *opened =
        new QCommandLinkButton(tr("Открыть проект"), tr("Файл project.xml на диске"), this);
    made->setObjectName(QStringLiteral("startNew"));
    opened->setObjectName(QStringLiteral("startOpen"));
    connect(made, &QAbstractButton::clicked, &files, &ProjectFiles::createByDialog);
    connect(opened, &QAbstractButton::clicked, &files, &ProjectFiles::openByDialog);
    connect(&files, &ProjectFiles::recentChanged, this, &StartPage::fill);

    auto *column = new QVBoxLayout;
    column->addStretch(1);
    column->addWidget(heading(tr("Конфигуратор проектов"), this));
    column->addWidget(made);
    column->addWidget(opened);
    auto *unsaved = new QVBoxLayout(m_unsavedPart);
    unsaved->setContentsMargins(0, 16, 0, 0);
    unsaved->addWidget(heading(tr("Несохранённая работа"), m_unsavedPart));
    unsaved->addLayout(m_unsaved);
    column->addWidget(m_unsavedPart);
    column->addSpacing(16);
    column->addWidget(heading(tr("Последние проекты"), this));
    column->addLayout(m_recent);
    column->addStretch(2);
    auto *grid = new QGridLayout(this);
    grid->setColumnStretch(0, 1);
    grid->setColumnMinimumWidth(1, pageWidth);
    grid->setColumnStretch(2, 1);
    grid->addLayout(column, 0, 1);
    fill();
}

void StartPage::showEvent(QShowEvent *event)
{
    fillUnsaved(); // what was closed, saved or left meanwhile
    QWidget::showEvent(event);
}

QWidget *StartPage::link(const QString &text, const QString &tip, const std::function<void()> &open)
{
    auto *button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setText(fontMetrics().elidedText(text, Qt::ElideMiddle, pageWidth - 64));
    button->setFocusPolicy(Qt::StrongFocus); // Tab, too
    button->setToolTip(tip);
    connect(button, &QToolButton::clicked, &m_files, open);
    return button;
}

void StartPage::fill()
{
    clear(*m_recent);
    const QStringList directories = RecentProjects::all();
    for (const QString &directory : directories)
        m_recent->addWidget(recent(directory));
    if (directories.isEmpty())
        m_recent->addWidget(
            new QLabel(tr("Здесь появятся проекты, с которыми вы работали."), this));
}

QWidget *StartPage::recent(const QString &directory)
{
    auto *row = new QWidget(this);
    auto *parts = new QHBoxLayout(row);
    parts->setContentsMargins(0, 0, 0, 0);
    parts->addWidget(link(QDir(directory).dirName() + QStringLiteral("   ") +
                              QDir::toNativeSeparators(directory),
                          directory, [this, directory] { m_files.open(directory); }));
    auto *remove = new QToolButton(row);
    remove->setAutoRaise(true);
    remove->setText(QStringLiteral("×"));
    remove->setToolTip(tr("Убрать из списка; сам проект останется на диске"));
    remove->setAccessibleName(tr("Убрать из списка «%1»").arg(directory));
    connect(remove, &QToolButton::clicked, &m_files,
            [this, directory] { m_files.forget(directory); });
    parts->addWidget(remove);
    parts->addStretch(1);
    return row;
}

// Of all projects: whoever starts again after a crash may not remember which it was. What another
// window edits now is not left by anybody.
void StartPage::fillUnsaved()
{
    clear(*m_unsaved);
    Nodes::RecoveryFile::Tidy(m_recovery.toStdString());
    std::vector<Nodes::RecoveryInfo> left = Nodes::RecoveryFile::List(m_recovery.toStdString());
    left.erase(std::remove_if(left.begin(), left.end(),
                              [](const Nodes::RecoveryInfo &info) {
                                  return !info.damage.empty() ||
                                         Nodes::ProjectHold::IsHeldNearby(info.project);
                              }),
               left.end());
    for (std::size_t i = 0; i < std::min(left.size(), unsavedAtMost); ++i) {
        const Nodes::RecoveryInfo &info = left[i];
        const QString project = QString::fromStdString(info.project);
        const QDateTime kept = QDateTime::fromMSecsSinceEpoch(info.saved / 1000);
        m_unsaved->addWidget(link(tr("%1   от %2   %3")
                                      .arg(QString::fromStdString(info.name),
                                           kept.toString(QStringLiteral("dd.MM.yyyy HH:mm")),
                                           QDir::toNativeSeparators(project)),
                                  tr("Открыть проект и решить, восстановить ли её"),
                                  [this, info] { m_files.openUnsaved(info); }));
    }
    if (left.size() > unsavedAtMost)
        m_unsaved->addWidget(new QLabel(tr("и ещё %1").arg(left.size() - unsavedAtMost), this));
    m_unsavedPart->setVisible(!left.empty());
}

} // namespace Editor
