#include "editor/signals/AlarmsDialog.h"

#include "editor/workspace/KeyboardAccess.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace Editor {

namespace {

struct Usual
{
    const char *type;
    const char *title;
    const char *limit;
    int priority;
    const char *text;
};

constexpr std::array<Usual, 4> usual{
    Usual{"HH", "HH — аварийно высокое", "95%", 1, "{описание}: аварийно высокое значение"},
    Usual{"H", "H — высокое", "85%", 2, "{описание}: высокое значение"},
    Usual{"L", "L — низкое", "15%", 2, "{описание}: низкое значение"},
    Usual{"LL", "LL — аварийно низкое", "5%", 1, "{описание}: аварийно низкое значение"},
};
constexpr double longestDelay = 3600; // s

} // namespace

AlarmsDialog::AlarmsDialog(int signalCount, QWidget *parent)
    : QDialog(parent),
      m_deadband(new QLineEdit(QStringLiteral("1%"), this)),
      m_delay(new QDoubleSpinBox(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Тревоги по пределам, сигналов: %1").arg(signalCount));
    auto *grid = new QGridLayout(this);
    const QStringList titles{tr("Предел"), tr("Уставка"), tr("Приоритет"), tr("Текст")};
    for (int column = 0; column < titles.size(); ++column)
        grid->addWidget(new QLabel(titles[column], this), 0, column);
    for (int row = 0; row < int(usual.size()); ++row)
        addRow(*grid, row);
    m_deadband->setObjectName(QStringLiteral("deadband"));
    m_delay->setObjectName(QStringLiteral("delay"));
    m_delay->setRange(0, longestDelay);
    m_delay->setSuffix(tr(" с"));
    m_delay->setValue(3);
    m_deadband->setAccessibleName(tr("Зона нечувствительности"));
    m_delay->setAccessibleName(tr("Задержка возникновения"));
    const int below = int(usual.size()) + 1;
    grid->addWidget(new QLabel(tr("Зона нечувствительности"), this), below, 0);
    grid->addWidget(m_deadband, below, 1);
    grid->addWidget(new QLabel(tr("Задержка возникновения"), this), below + 1, 0);
    grid->addWidget(m_delay, below + 1, 1);
    auto *hint = new QLabel(
        tr("Уставка — число в единицах сигнала или доля его диапазона: 85%. В тексте {описание}, "
           "{имя}, {предел} и {единица} заменяются своими для каждого сигнала. Тревоги, которые "
           "уже есть, получат эти значения; всё вместе — один шаг истории."),
        this);
    hint->setWordWrap(true);
    grid->addWidget(hint, below + 2, 0, 1, titles.size());
    grid->addWidget(m_buttons, below + 3, 0, 1, titles.size());
    grid->setColumnStretch(3, 1);
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Задать"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Отмена"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    KeyboardAccess::followLayouts(*this);
    setMinimumWidth(680);
    check();
}

void AlarmsDialog::addRow(QGridLayout &grid, int row)
{
    const Usual &of = usual[std::size_t(row)];
    Row &made = m_limits[std::size_t(row)];
    const QString name = QLatin1String(of.type);
    made = {new QCheckBox(QString::fromUtf8(of.title), this),
            new QLineEdit(QLatin1String(of.limit), this), new QComboBox(this),
            new QLineEdit(QString::fromUtf8(of.text), this)};
    made.isWanted->setObjectName(name);
    made.limit->setObjectName(name + QStringLiteral(".limit"));
    made.limit->setMaximumWidth(110);
    made.limit->setAccessibleName(tr("Уставка %1").arg(name));
    made.priority->setAccessibleName(tr("Приоритет %1").arg(name));
    made.text->setAccessibleName(tr("Текст %1").arg(name));
    made.text->setObjectName(name + QStringLiteral(".text"));
    for (int priority = 1; priority <= 4; ++priority)
        made.priority->addItem(QString::number(priority));
    made.priority->setCurrentIndex(of.priority - 1);
    grid.addWidget(made.isWanted, row + 1, 0);
    grid.addWidget(made.limit, row + 1, 1);
    grid.addWidget(made.priority, row + 1, 2);
    grid.addWidget(made.text, row + 1, 3);
    connect(made.isWanted, &QCheckBox::toggled, this, &AlarmsDialog::check);
    connect(made.limit, &QLineEdit::textChanged, this, &AlarmsDialog::check);
}

void AlarmsDialog::check()
{
    bool isFit = false;
    bool isWhole = true;
    for (const Row &row : m_limits) {
        const bool isWanted = row.isWanted->isChecked();
        for (QWidget *part :
             {static_cast<QWidget *>(row.limit), static_cast<QWidget *>(row.priority),
              static_cast<QWidget *>(row.text)})
            part->setEnabled(isWanted);
        isFit = isFit || isWanted;
        isWhole = isWhole && (!isWanted || !row.limit->text().trimmed().isEmpty());
    }
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(isFit && isWhole);
}

std::vector<LimitAlarm> AlarmsDialog::alarms() const
{
    std::vector<LimitAlarm> wanted;
    for (const Row &row : m_limits) {
        if (row.isWanted->isChecked())
            wanted.push_back({row.isWanted->objectName().toStdString(),
                              row.limit->text().trimmed().toStdString(),
                              row.priority->currentText().toStdString(),
                              row.text->text().trimmed().toStdString()});
    }
    return wanted;
}

std::string AlarmsDialog::deadband() const
{
    const QString text = m_deadband->text().trimmed();
    return text.isEmpty() ? "0" : text.toStdString();
}

int AlarmsDialog::delay() const
{
    return int(m_delay->value() * 1000);
}

} // namespace Editor
