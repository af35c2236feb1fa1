#include "editor/help/AboutDialog.h"

#include "editor/help/Libraries.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSysInfo>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace Editor {

AboutDialog::AboutDialog(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(tr("О программе"));
    auto *title = new QLabel(tr("Конфигуратор станции оператора"), this);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    title->setFont(large);
    auto *text = new QLabel(tr("Создаёт и правит проекты: окна, сигналы, тревоги, отчёты, права.") +
                                QStringLiteral("\n\n") + versions(),
                            this);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *heading = new QLabel(tr("Библиотеки и их лицензии"), this);
    auto *rows = new QTreeWidget(this);
    rows->setAccessibleName(heading->text());
    addLibraries(*rows);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *copy = buttons->addButton(tr("Копировать версии"), QDialogButtonBox::ActionRole);
    QPushButton *close = buttons->addButton(tr("Закрыть"), QDialogButtonBox::RejectRole);
    copy->setAutoDefault(false);
    close->setDefault(true);
    close->setFocus();
    connect(copy, &QPushButton::clicked, this,
            [] { QGuiApplication::clipboard()->setText(versions()); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    for (QWidget *part : std::initializer_list<QWidget *>{title, text, heading, rows, buttons})
        layout->addWidget(part, part == rows ? 1 : 0);
    resize(640, 560);
}

QString AboutDialog::versions()
{
    return tr("Версия %1\nQt %2\n%3, %4")
        .arg(QApplication::applicationVersion(), QString::fromLatin1(qVersion()),
             QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture());
}

void AboutDialog::addLibraries(QTreeWidget &rows)
{
    rows.setHeaderLabels({tr("Библиотека"), tr("Для чего"), tr("Лицензия")});
    rows.setRootIsDecorated(false);
    rows.setAlternatingRowColors(true);
    rows.header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    for (const Library &library : Libraries())
        new QTreeWidgetItem(&rows,
                            {QString::fromUtf8(library.name), QString::fromUtf8(library.purpose),
                             QString::fromUtf8(library.licence)});
}

} // namespace Editor
