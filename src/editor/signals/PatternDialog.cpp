#include "editor/signals/PatternDialog.h"

#include "editor/signals/SheetModel.h"

#include "nodes/model/KindTable.h"
#include "nodes/project/signals/NamePattern.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr std::size_t shownNames = 6;
constexpr int most = 65535;

QSpinBox *number(QWidget *parent, int value, int least)
{
    auto *box = new QSpinBox(parent);
    box->setRange(least, most);
    box->setValue(value);
    return box;
}

/// New nodes go beside the first of the table: signals of a device into its group.
QString usualPattern(const SheetModel &model)
{
    const QString name = model.rowCount() > 0 ? model.text(0, 0) : QString();
    return name.left(name.lastIndexOf(QLatin1Char('/')) + 1) + QStringLiteral("Т{01..10}");
}

} // namespace

PatternDialog::PatternDialog(const SheetModel &model, QWidget *parent)
    : QDialog(parent),
      m_model(model),
      m_kinds(model.kinds()),
      m_pattern(new QLineEdit(usualPattern(model), this)),
      m_kind(new QComboBox(this)),
      m_column(new QComboBox(this)),
      m_first(number(this, 0, -most)),
      m_step(number(this, 1, -most)),
      m_preview(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Добавить по образцу"));
    for (const Nodes::KindInfo &kind : Nodes::KindTable::Instance().GetKinds()) {
        const bool isOther = kind.type.GetFamily() == model.family() &&
                             kind.type.GetSubtype() != Nodes::NodeType::SubtypeTemplateParameter &&
                             std::find(m_kinds.begin(), m_kinds.end(), &kind) == m_kinds.end();
        if (isOther)
            m_kinds.push_back(&kind);
    }
    for (const Nodes::KindInfo *kind : m_kinds)
        m_kind->addItem(QString::fromStdString(kind->nameRu));
    offerColumns();
    m_preview->setWordWrap(true);
    m_preview->setTextFormat(Qt::PlainText);
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Добавить"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Отмена"));
    m_first->setAccessibleName(tr("Первое число"));
    m_step->setAccessibleName(tr("Шаг"));
    auto *counting = new QHBoxLayout;
    counting->addWidget(m_column, 1);
    counting->addWidget(new QLabel(tr("с"), this));
    counting->addWidget(m_first);
    counting->addWidget(new QLabel(tr("шаг"), this));
    counting->addWidget(m_step);
    auto *form = new QFormLayout;
    form->addRow(tr("Имена"), m_pattern);
    form->addRow(tr("Вид"), m_kind);
    form->addRow(tr("По порядку"), counting);
    auto *hint = new QLabel(tr("{1..4} — числа, {01..20} — с нулями, {вход,выход} — список, «/» — "
                               "папка: К{1..4}/Т{01..20}"),
                            this);
    hint->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(hint);
    layout->addWidget(m_preview);
    layout->addStretch();
    layout->addWidget(m_buttons);
    setMinimumWidth(520);
    connect(m_pattern, &QLineEdit::textChanged, this, &PatternDialog::check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    check();
}

void PatternDialog::offerColumns()
{
    m_column->addItem(tr("(ничего)"), -1);
    for (int i = 0; i < m_model.columnCount(); ++i) {
        const Nodes::SheetColumn &column = m_model.columns()[std::size_t(i)];
        const Nodes::PropertyDescriptor *d =
            column.what == Nodes::SheetColumn::Property ? column.descriptor : nullptr;
        const bool isNumber = d && d->choices.empty() &&
                              (d->binding.type == Nodes::PropertyType::Int ||
                               d->binding.type == Nodes::PropertyType::Double);
        if (!isNumber)
            continue;
        m_column->addItem(QString::fromStdString(d->nameRu), i);
        if (d->key == "offset") // addresses count nearly always
            m_column->setCurrentIndex(m_column->count() - 1);
    }
}

void PatternDialog::check()
{
    const Nodes::Result made =
        Nodes::NamePattern::Expand(m_pattern->text().trimmed().toStdString(), m_names);
    QString text = QString::fromStdString(made.GetDetail());
    const bool isFit = made && !m_names.front().empty();
    if (isFit) {
        QStringList shown;
        for (std::size_t i = 0; i < std::min(shownNames, m_names.size()); ++i)
            shown << QString::fromStdString(m_names[i]);
        if (m_names.size() > shownNames)
            shown << QStringLiteral("… %1").arg(QString::fromStdString(m_names.back()));
        text = tr("Будет создано: %1 — %2").arg(m_names.size()).arg(shown.join(", "));
    } else if (made) {
        text = tr("Впишите имя или образец.");
    }
    m_preview->setText(text);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(isFit);
}

const Nodes::KindInfo &PatternDialog::kind() const
{
    return *m_kinds[std::size_t(m_kind->currentIndex())];
}

int PatternDialog::column() const
{
    return m_column->currentData().toInt();
}

double PatternDialog::first() const
{
    return m_first->value();
}

double PatternDialog::step() const
{
    return m_step->value();
}

} // namespace Editor
