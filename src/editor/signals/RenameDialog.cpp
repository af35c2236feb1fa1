#include "editor/signals/RenameDialog.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/project/signals/NamePattern.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace Editor {

namespace {
constexpr int mostShown = 1000; // rows of the preview
}

RenameDialog::RenameDialog(const Nodes::NodeLinks &nodes, QWidget *parent)
    : QDialog(parent),
      m_search(new QLineEdit(this)),
      m_replacement(new QLineEdit(this)),
      m_form(new QLineEdit(QStringLiteral("{имя}"), this)),
      m_table(new QTableWidget(std::min(int(nodes.size()), mostShown), 2, this)),
      m_count(new QLabel(this))
{
    setWindowTitle(tr("Переименовать по образцу"));
    for (const Nodes::NodeLink &node : nodes)
        m_old.push_back(node.GetLinkName());
    m_form->setToolTip(tr("{имя} — прежнее имя после замены, {001} — номер по порядку, начиная с "
                          "этого, с нулями"));
    m_table->setHorizontalHeaderLabels({tr("Было"), tr("Станет")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setAccessibleName(tr("Имена до и после"));
    auto *form = new QFormLayout;
    form->addRow(tr("Заменить"), m_search);
    form->addRow(tr("на"), m_replacement);
    form->addRow(tr("Образец"), m_form);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Переименовать"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("Отмена"));
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_count);
    layout->addWidget(buttons);
    resize(560, 480);
    for (QLineEdit *line : {m_search, m_replacement, m_form})
        connect(line, &QLineEdit::textChanged, this, &RenameDialog::preview);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    preview();
}

void RenameDialog::preview()
{
    m_names.clear();
    int changed = 0;
    for (std::size_t i = 0; i < m_old.size(); ++i) {
        m_names.push_back(Nodes::NamePattern::Renamed(m_old[i], i, m_search->text().toStdString(),
                                                      m_replacement->text().toStdString(),
                                                      m_form->text().toStdString()));
        const bool isChanged = m_names[i] != m_old[i];
        changed += isChanged;
        if (int(i) >= mostShown)
            continue;
        auto *before = new QTableWidgetItem(QString::fromStdString(m_old[i]));
        auto *after = new QTableWidgetItem(QString::fromStdString(m_names[i]));
        QFont font = after->font();
        font.setBold(isChanged);
        after->setFont(font);
        m_table->setItem(int(i), 0, before);
        m_table->setItem(int(i), 1, after);
    }
    m_count->setText(tr("Изменится имён: %1 из %2").arg(changed).arg(m_old.size()));
}

} // namespace Editor
