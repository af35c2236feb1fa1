#include "editor/shell/StartPage.h"

#include "editor/shell/ProjectFiles.h"

#include <QCommandLinkButton>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr int pageWidth = 720;

QLabel *heading(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    label->setFont(font);
    return label;
}

} // namespace

StartPage::StartPage(ProjectFiles &files, QWidget *parent)
    : QWidget(parent), m_files(files), m_recent(new QVBoxLayout)
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

void StartPage::fill()
{
    while (QLayoutItem *item = m_recent->takeAt(0)) {
        if (QWidget *widget = item->widget())
            widget->deleteLater();
        delete item;
    }
    const QStringList directories = m_files.recent();
    for (const QString &directory : directories) {
        auto *link = new QToolButton(this);
        link->setAutoRaise(true);
        link->setText(fontMetrics().elidedText(QDir(directory).dirName() + QStringLiteral("   ") +
                                                   QDir::toNativeSeparators(directory),
                                               Qt::ElideMiddle, pageWidth - 32));
        link->setToolTip(directory);
        connect(link, &QToolButton::clicked, &m_files,
                [this, directory] { m_files.open(directory); });
        m_recent->addWidget(link);
    }
    if (directories.isEmpty())
        m_recent->addWidget(
            new QLabel(tr("Здесь появятся проекты, с которыми вы работали."), this));
}

} // namespace Editor
