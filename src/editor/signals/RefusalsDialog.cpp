#include "editor/signals/RefusalsDialog.h"

#include "nodes/project/signals/DelimitedText.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr int mostShown = 10000; // rows; all of them are copied
constexpr int margins = 60;      // of dialog, frame and scroll bar

QTableWidgetItem *cell(const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setToolTip(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return item;
}

QString rowText(const Nodes::SheetRefusal &refusal)
{
    return refusal.row > 0 ? QString::number(refusal.row) : QStringLiteral("—");
}

} // namespace

RefusalsDialog::RefusalsDialog(const std::vector<Nodes::SheetRefusal> &refusals, QWidget *parent)
    : QDialog(parent), m_refusals(refusals)
{
    setWindowTitle(tr("Не принято"));
    const int count = int(std::min(refusals.size(), std::size_t(mostShown)));
    auto *table = new QTableWidget(count, 4, this);
    table->setHorizontalHeaderLabels(
        {tr("Строка"), tr("Столбец"), tr("Значение"), tr("Почему и что делать")});
    for (int i = 0; i < count; ++i) {
        const Nodes::SheetRefusal &refusal = refusals[std::size_t(i)];
        table->setItem(i, 0, cell(rowText(refusal)));
        table->setItem(i, 1, cell(QString::fromStdString(refusal.column)));
        table->setItem(i, 2, cell(QString::fromStdString(refusal.text)));
        table->setItem(i, 3, cell(QString::fromStdString(refusal.reason)));
    }
    table->verticalHeader()->hide();
    table->setWordWrap(true);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setColumnWidth(0, 64);
    table->setColumnWidth(1, 150);
    table->setColumnWidth(2, 150);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setAccessibleName(windowTitle());
    auto *buttons = new QDialogButtonBox(this);
    auto *copyButton = buttons->addButton(tr("Копировать список"), QDialogButtonBox::ActionRole);
    buttons->addButton(tr("Закрыть"), QDialogButtonBox::RejectRole);
    auto *label = new QLabel(tr("Не принято: %1. Остальное сделано одним шагом, его можно отменить "
                                "(Ctrl+Z).")
                                 .arg(refusals.size()),
                             this);
    label->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(table, 1);
    layout->addWidget(buttons);
    resize(860, 420);
    table->setColumnWidth(3, width() - 64 - 2 * 150 - margins); // rows are fitted to it unseen
    table->resizeRowsToContents();
    connect(copyButton, &QPushButton::clicked, this, &RefusalsDialog::copy);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void RefusalsDialog::copy() const
{
    Nodes::TextTable table{{"Строка", "Столбец", "Значение", "Почему и что делать"}};
    for (const Nodes::SheetRefusal &refusal : m_refusals)
        table.push_back(
            {rowText(refusal).toStdString(), refusal.column, refusal.text, refusal.reason});
    QApplication::clipboard()->setText(
        QString::fromStdString(Nodes::DelimitedText::Write(table, '\t', "\n")));
}

void RefusalsDialog::tell(const std::vector<Nodes::SheetRefusal> &refusals, QWidget *parent)
{
    if (refusals.empty())
        return;
    auto *dialog = new RefusalsDialog(refusals, parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace Editor
