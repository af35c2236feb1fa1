#include "editor/properties/values/ColorEditor.h"

#include "editor/properties/values/ColorSwatch.h"
#include "editor/properties/values/ProjectColors.h"

#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/values/NColor.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QWidgetAction>

namespace Editor {

namespace {

constexpr int columns = 8;
constexpr std::size_t maximumColors = 48;

QColor colorOf(const QString &text)
{
    const auto color = Nodes::NColor::FromHex(text.toStdString());
    return color ? QColor(color->red, color->green, color->blue, color->alpha) : QColor(Qt::white);
}

QString textOf(const QColor &color)
{
    return QString::fromStdString(
        Nodes::NColor(color.red(), color.green(), color.blue(), color.alpha()).ToHex());
}

} // namespace

ColorEditor::ColorEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_line(new QLineEdit(this))
{
    m_line->setFrame(false);
    setMain(m_line);
    connect(m_line, &QLineEdit::textEdited, this, [this] { touch(); });
    QToolButton *colors =
        addButton(QStringLiteral("▾"), QStringLiteral("Цвета проекта (Alt+Вниз)"));
    colors->setShortcut(QKeySequence(Qt::ALT + Qt::Key_Down));
    connect(colors, &QToolButton::clicked, this, &ColorEditor::openColors);
}

ColorEditor::~ColorEditor() = default;

void ColorEditor::setText(const QString &text)
{
    m_line->setText(text);
}

QString ColorEditor::text() const
{
    return m_line->text().trimmed();
}

void ColorEditor::take(const QString &text)
{
    setText(text);
    finish();
}

void ColorEditor::openColors()
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    auto *grid = new QWidget(menu);
    auto *layout = new QGridLayout(grid);
    layout->setSpacing(2);
    int place = 0;
    for (const QString &text : projectColors(context().project, maximumColors)) {
        auto *button = new QToolButton(grid);
        button->setIcon(colorSwatch(text, 20));
        button->setIconSize(QSize(20, 20));
        button->setAutoRaise(true);
        button->setToolTip(text);
        button->setAccessibleName(text);
        layout->addWidget(button, place / columns, place % columns);
        ++place;
        connect(button, &QToolButton::clicked, this, [this, menu, text] {
            menu->close();
            take(text);
        });
    }
    auto *action = new QWidgetAction(menu);
    action->setDefaultWidget(grid);
    menu->addAction(action);
    menu->addAction(QStringLiteral("Другой цвет…"), this, &ColorEditor::choose);
    menu->addAction(QStringLiteral("Прозрачный"), this,
                    [this] { take(QStringLiteral("#00000000")); });
    menu->addAction(QStringLiteral("По умолчанию"), this,
                    [this] { take(QString::fromStdString(descriptor().defaultText)); });
    menu->popup(mapToGlobal(QPoint(0, height())));
}

void ColorEditor::choose()
{
    auto *dialog = new QColorDialog(colorOf(text()), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOptions(QColorDialog::ShowAlphaChannel | QColorDialog::DontUseNativeDialog);
    dialog->setWindowTitle(QString::fromStdString(descriptor().nameRu));
    connect(dialog, &QColorDialog::colorSelected, this,
            [this](const QColor &color) { take(textOf(color)); });
    dialog->open();
}

} // namespace Editor
