#include "editor/drivers/PropertyForm.h"

#include "editor/drivers/FieldHelp.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/project/signals/CellText.h"
#include "nodes/project/signals/NodePaths.h"
#include "utils/undo/ChangePropertyCommand.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalBlocker>

namespace Editor {

using Nodes::PropertyDescriptor;
using Nodes::PropertyType;

namespace {

constexpr int fieldWidth = 200;
constexpr QRgb refusedGround = 0xfffdd9d5;
constexpr QRgb helpText = 0xff505050; // 7:1 on the window

bool isShown(const PropertyDescriptor &descriptor)
{
    const PropertyType type = descriptor.binding.type;
    return type != PropertyType::Secret && type != PropertyType::Link &&
           type != PropertyType::Links && type != PropertyType::Resource &&
           type != PropertyType::Color;
}

QString helpOf(const PropertyDescriptor &descriptor)
{
    const QString admissible = QString::fromStdString(Nodes::CellText::Admissible(descriptor));
    const QString key = QString::fromStdString(descriptor.key);
    return admissible.isEmpty() ? key : PropertyForm::tr("%1; допустимо: %2").arg(key, admissible);
}

// A refused text must not look like the value.
void mark(QWidget &field, const PropertyDescriptor &descriptor, const QString &refusal)
{
    QPalette colors;
    if (!refusal.isEmpty())
        colors.setColor(QPalette::Base, QColor(refusedGround));
    field.setPalette(colors);
    field.setToolTip(refusal.isEmpty() ? helpOf(descriptor) : refusal);
}

void display(QWidget &field, const QString &text)
{
    const QSignalBlocker blocker(&field);
    if (auto *check = qobject_cast<QCheckBox *>(&field))
        check->setChecked(text == QStringLiteral("да"));
    else if (auto *box = qobject_cast<QComboBox *>(&field))
        box->setCurrentText(text);
    else if (auto *line = qobject_cast<QLineEdit *>(&field); line && line->text() != text)
        line->setText(text);
}

} // namespace

PropertyForm::PropertyForm(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent)
    : QWidget(parent), m_workspace(workspace), m_node(node)
{
    auto *form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->setLabelAlignment(Qt::AlignLeft);
    Nodes::ConfigNode *shown = node.GetNode();
    if (!shown || !shown->GetKind())
        return;
    for (const PropertyDescriptor &descriptor : shown->GetKind()->properties) {
        if (isShown(descriptor))
            addField(*form, descriptor);
    }
    m_connection = shown->ConnectPropertyChanged([this](Nodes::BasicProperty *) { refresh(); });
    connect(&workspace.session(), &ProjectSession::readOnlyChanged, this, &PropertyForm::refresh);
    refresh();
}

PropertyForm::~PropertyForm() = default;

QWidget *PropertyForm::field(const std::string &key) const
{
    const auto found = m_fields.find(key);
    return found == m_fields.end() ? nullptr : found->second;
}

// Descriptors live as long as the program.
void PropertyForm::addField(QFormLayout &form, const PropertyDescriptor &descriptor)
{
    const PropertyDescriptor *d = &descriptor;
    QWidget *field = nullptr;
    if (d->binding.type == PropertyType::Bool) {
        auto *check = new QCheckBox(this);
        connect(check, &QCheckBox::toggled, this, [this, d](bool isOn) {
            commit(*d, isOn ? QStringLiteral("да") : QStringLiteral("нет"));
        });
        field = check;
    } else if (!d->choices.empty()) {
        auto *box = new QComboBox(this);
        for (const Nodes::PropertyChoice &choice : d->choices)
            box->addItem(QString::fromStdString(choice.nameRu));
        connect(box, QOverload<int>::of(&QComboBox::activated), this,
                [this, d, box] { commit(*d, box->currentText()); });
        field = box;
    } else {
        auto *line = new QLineEdit(this);
        line->setMinimumWidth(fieldWidth);
        connect(line, &QLineEdit::editingFinished, this,
                [this, d, line] { commit(*d, line->text()); });
        auto *back = new QShortcut(QKeySequence(Qt::Key_Escape), line);
        back->setContext(Qt::WidgetShortcut);
        connect(back, &QShortcut::activated, this, [this, d, line] { showValue(*line, *d); });
        field = line;
    }
    field->setObjectName(QString::fromStdString(d->key));
    field->setToolTip(helpOf(*d));
    m_fields[d->key] = field;
    form.addRow(QString::fromStdString(d->nameRu), withHelp(field, *d));
}

QWidget *PropertyForm::withHelp(QWidget *field, const PropertyDescriptor &descriptor)
{
    const bool isTyped = qobject_cast<QLineEdit *>(field);
    const QString range =
        isTyped ? QString::fromStdString(Nodes::CellText::Admissible(descriptor)) : QString();
    const QString sentence = FieldHelp(m_node.GetNode()->GetKind()->key, descriptor.key);
    const QString help = range.isEmpty() || sentence.isEmpty() ? range + sentence
                                                               : tr("%1. %2").arg(range, sentence);
    if (help.isEmpty())
        return field;
    auto *line = new QWidget(this);
    auto *text = new QLabel(help, line);
    text->setWordWrap(true);
    QPalette quiet = text->palette();
    quiet.setColor(QPalette::WindowText, QColor(helpText));
    text->setPalette(quiet);
    auto *layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(field);
    layout->addWidget(text, 1);
    return line;
}

void PropertyForm::commit(const PropertyDescriptor &descriptor, const QString &text)
{
    const Nodes::ConfigNode *node = m_node.GetNode();
    if (!node)
        return;
    QWidget &entered = *m_fields[descriptor.key];
    const std::string value = Nodes::CellText::Show(descriptor, *node);
    if (value == text.toStdString())
        return mark(entered, descriptor, {});
    boost::any read;
    const Nodes::NodePaths paths(node->GetNodesCollection());
    const Nodes::Result result = Nodes::CellText::Read(descriptor, text.toStdString(), paths, read);
    if (!result) {
        const QString refusal =
            tr("Значение не изменено: %1.").arg(QString::fromStdString(result.GetDetail()));
        mark(entered, descriptor,
             tr("%1\nВ проекте: %2. Esc вернёт его.").arg(refusal, QString::fromStdString(value)));
        return m_workspace.tell(Workspace::Error, refusal);
    }
    m_workspace.push(new Utils::ChangePropertyCommand(m_node, descriptor.valueId, std::move(read)));
    refresh();
}

void PropertyForm::refresh()
{
    const Nodes::ConfigNode *node = m_node.GetNode();
    setEnabled(node && !m_workspace.session().isReadOnly());
    if (!node)
        return;
    for (const auto &[key, field] : m_fields)
        showValue(*field, *node->GetKind()->FindProperty(std::string_view(key)));
}

void PropertyForm::showValue(QWidget &field, const PropertyDescriptor &descriptor) const
{
    const Nodes::ConfigNode *node = m_node.GetNode();
    if (!node)
        return;
    mark(field, descriptor, {});
    display(field, QString::fromStdString(Nodes::CellText::Show(descriptor, *node)));
}

} // namespace Editor
