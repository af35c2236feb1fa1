#include "editor/wizard/NewWindowDialog.h"

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

const QSize presets[] = {{1920, 1080}, {1366, 768}, {1280, 1024}, {2560, 1440}, {3840, 2160}};
const QSize called(640, 480);  // opens above others
constexpr int largest = 16384; // px
constexpr int displays = 16;

QSpinBox *pixels(QWidget *parent)
{
    auto *box = new QSpinBox(parent);
    box->setRange(16, largest);
    box->setSuffix(QStringLiteral(" пкс"));
    return box;
}

} // namespace

NewWindowDialog::NewWindowDialog(const QString &name, QWidget *parent)
    : QDialog(parent),
      m_name(new QLineEdit(name, this)),
      m_preset(new QComboBox(this)),
      m_width(pixels(this)),
      m_height(pixels(this)),
      m_display(new QSpinBox(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Новое окно"));
    for (const QSize &preset : presets)
        m_preset->addItem(QStringLiteral("%1 × %2").arg(preset.width()).arg(preset.height()),
                          preset);
    m_preset->addItem(tr("Другой размер"));
    m_display->setRange(1, displays);
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Создать"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Отмена"));
    m_width->setAccessibleName(tr("Ширина"));
    m_height->setAccessibleName(tr("Высота"));
    auto *size = new QHBoxLayout;
    size->addWidget(m_width);
    size->addWidget(new QLabel(QStringLiteral("×"), this));
    size->addWidget(m_height);
    size->addStretch();
    auto *form = new QFormLayout;
    form->addRow(tr("Название"), m_name);
    form->addRow(tr("Экран"), m_preset);
    form->addRow(tr("Размер"), size);
    form->addRow(tr("Показывать на дисплее"), m_display);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_buttons);

    connect(m_preset, QOverload<int>::of(&QComboBox::activated), this,
            &NewWindowDialog::takePreset);
    connect(m_name, &QLineEdit::textChanged, this, &NewWindowDialog::check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    takePreset(0);
    m_name->selectAll();
    check();
}

void NewWindowDialog::setDisplay(int display, bool mayBeCalled)
{
    m_display->setMinimum(mayBeCalled ? 0 : 1);
    m_display->setSpecialValueText(mayBeCalled ? tr("по вызову") : QString());
    m_display->setValue(display);
    if (display)
        return;
    m_width->setValue(called.width());
    m_height->setValue(called.height());
    m_preset->setCurrentIndex(m_preset->count() - 1);
}

QString NewWindowDialog::name() const
{
    return m_name->text().trimmed();
}

QSize NewWindowDialog::size() const
{
    return {m_width->value(), m_height->value()};
}

int NewWindowDialog::display() const
{
    return m_display->value();
}

void NewWindowDialog::takePreset(int index)
{
    const QSize preset = m_preset->itemData(index).toSize();
    if (!preset.isValid()) {
        m_width->setFocus();
        return;
    }
    m_width->setValue(preset.width());
    m_height->setValue(preset.height());
}

void NewWindowDialog::check()
{
    m_buttons->button(QDialogButtonBox::Ok)
        ->setEnabled(!name().isEmpty() && !name().contains(QLatin1Char('/')));
}

} // namespace Editor
