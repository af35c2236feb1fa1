#include "editor/properties/font/FontWindow.h"

#include "editor/properties/PropertyModel.h"

#include "nodes/model/properties/PropertyDescriptor.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

namespace Editor {

namespace {

const PropertyRow *partOf(const PropertyRow &font, unsigned valueId)
{
    for (const auto &part : font.rows) {
        if (part->descriptor->valueId == valueId)
            return part.get();
    }
    return nullptr;
}

} // namespace

FontWindow::FontWindow(PropertyModel &model, const QString &key, QWidget *parent)
    : QDialog(parent),
      m_model(model),
      m_key(key),
      m_family(new QFontComboBox(this)),
      m_size(new QSpinBox(this)),
      m_sample(new QLabel(QStringLiteral("Котёл 1: 87,5 °C АБВ abc"), this))
{
    auto *layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("Шрифт:"), m_family);
    layout->addRow(QStringLiteral("Размер, пт:"), m_size);
    const PropertyRow *row = PropertyModel::row(model.find(key));
    if (row)
        fill(*row);
    m_sample->setMinimumSize(320, 64);
    m_sample->setAlignment(Qt::AlignCenter);
    m_sample->setFrameShape(QFrame::StyledPanel);
    layout->addRow(m_sample);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *take =
        buttons->addButton(QStringLiteral("Применить"), QDialogButtonBox::AcceptRole);
    take->setEnabled(row && model.edits().readOnly().isEmpty());
    buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    layout->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &FontWindow::apply);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(&model, &PropertyModel::nodesChanged, this, &QDialog::reject);
    showSample();
}

FontWindow::~FontWindow() = default;

void FontWindow::addStyle(const PropertyRow &row, unsigned valueId, const QString &title)
{
    const PropertyRow *part = valueId == 0 ? nullptr : partOf(row, valueId);
    if (!part)
        return;
    auto *box = new QCheckBox(title, this);
    box->setTristate(part->value.isMixed);
    box->setCheckState(part->value.isMixed          ? Qt::PartiallyChecked
                       : part->value.text == "true" ? Qt::Checked
                                                    : Qt::Unchecked);
    static_cast<QFormLayout *>(layout())->addRow(QString(), box);
    m_styles.push_back({valueId, box});
    connect(box, &QCheckBox::stateChanged, this, &FontWindow::showSample);
}

void FontWindow::fill(const PropertyRow &row)
{
    m_ids = *fontOf(row.rows.front()->descriptor->valueId);
    const PropertyRow *family = partOf(row, m_ids.family);
    const PropertyRow *size = partOf(row, m_ids.size);
    m_family->setEnabled(family != nullptr);
    m_size->setEnabled(size != nullptr);
    if (family)
        m_family->setEditText(family->value.isMixed ? QString()
                                                    : QString::fromStdString(family->value.text));
    if (size) {
        const Nodes::PropertyDescriptor &d = *size->descriptor;
        m_size->setRange(d.hasRange ? int(d.minimum) : 1, d.hasRange ? int(d.maximum) : 500);
        m_size->setValue(QString::fromStdString(size->value.text).toInt());
    }
    addStyle(row, m_ids.bold, QStringLiteral("Полужирный"));
    addStyle(row, m_ids.italic, QStringLiteral("Курсив"));
    addStyle(row, m_ids.underline, QStringLiteral("Подчёркнутый"));
    addStyle(row, m_ids.strikeOut, QStringLiteral("Зачёркнутый"));
    connect(m_family, &QFontComboBox::editTextChanged, this, [this] {
        m_isFamilyTouched = true;
        showSample();
    });
    connect(m_size, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] {
        m_isSizeTouched = true;
        showSample();
    });
}

void FontWindow::showSample()
{
    QFont font(m_family->currentText(), std::max(m_size->value(), 1));
    for (const Style &style : m_styles) {
        const bool isOn = style.box->checkState() == Qt::Checked;
        if (style.valueId == m_ids.bold)
            font.setBold(isOn);
        else if (style.valueId == m_ids.italic)
            font.setItalic(isOn);
        else if (style.valueId == m_ids.underline)
            font.setUnderline(isOn);
        else
            font.setStrikeOut(isOn);
    }
    m_sample->setFont(font);
}

void FontWindow::apply()
{
    PropertyEdits::Texts texts;
    if (m_isFamilyTouched)
        texts.emplace_back(m_ids.family, m_family->currentText());
    if (m_isSizeTouched)
        texts.emplace_back(m_ids.size, QString::number(m_size->value()));
    for (const Style &style : m_styles) {
        const Qt::CheckState state = style.box->checkState();
        if (state != Qt::PartiallyChecked)
            texts.emplace_back(style.valueId, state == Qt::Checked ? QStringLiteral("true")
                                                                   : QStringLiteral("false"));
    }
    if (m_model.setProperties(m_model.find(m_key), texts))
        accept();
}

} // namespace Editor
