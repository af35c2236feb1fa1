#include "editor/properties/values/PrivilegesEditor.h"

#include "editor/properties/PropertyTexts.h"

#include "nodes/auth/PrivilegeSet.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QWidgetAction>

namespace Editor {

namespace {

// All of them are written as one word, which also means those of tomorrow.
QString textOf(const Nodes::PrivilegeSet &set)
{
    QStringList tokens;
    int count = 0;
    for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type, ++count) {
        if (set.Contains(Nodes::enPrivilegeType(type)))
            tokens << QString::fromStdString(Nodes::PrivilegeToken(Nodes::enPrivilegeType(type)));
    }
    return tokens.size() == count ? QStringLiteral("all") : tokens.join(QLatin1Char(' '));
}

Nodes::PrivilegeSet changed(const QString &text, int changedType, bool isGiven)
{
    const auto old = Nodes::PrivilegeSet::FromText(text.toStdString());
    Nodes::PrivilegeSet set;
    for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type) {
        if (type == changedType ? isGiven : old.Contains(Nodes::enPrivilegeType(type)))
            set.Add(Nodes::enPrivilegeType(type));
    }
    return set;
}

} // namespace

PrivilegesEditor::PrivilegesEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_line(new QLineEdit(this))
{
    m_line->setReadOnly(true);
    m_line->setFrame(false);
    setMain(m_line);
    QToolButton *button = addButton(QStringLiteral("▾"), QStringLiteral("Выбрать (Alt+Вниз)"));
    button->setShortcut(QKeySequence(Qt::ALT + Qt::Key_Down));
    connect(button, &QToolButton::clicked, this, &PrivilegesEditor::openList);
}

PrivilegesEditor::~PrivilegesEditor() = default;

void PrivilegesEditor::setText(const QString &text)
{
    m_text = text;
    show();
}

void PrivilegesEditor::show()
{
    m_line->setText(PropertyTexts::shown(descriptor(), m_text, nullptr));
}

QString PrivilegesEditor::text() const
{
    return m_text;
}

void PrivilegesEditor::openList()
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto set = Nodes::PrivilegeSet::FromText(m_text.toStdString());
    for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type) {
        const auto privilege = Nodes::enPrivilegeType(type);
        auto *box = new QCheckBox(QString::fromStdString(Nodes::PrivilegeName(privilege)), menu);
        box->setChecked(set.Contains(privilege));
        auto *action = new QWidgetAction(menu);
        action->setDefaultWidget(box);
        menu->addAction(action);
        connect(box, &QCheckBox::toggled, this, [this, type](bool isGiven) {
            m_text = textOf(changed(m_text, type, isGiven));
            touch();
            show();
        });
    }
    menu->popup(mapToGlobal(QPoint(0, height())));
}

} // namespace Editor
