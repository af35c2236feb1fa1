#include "editor/templates/TemplateDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Editor {

TemplateDialog::TemplateDialog(QWidget *parent)
    : QDialog(parent),
      m_name(new QLineEdit(tr("Шаблон"), this)),
      m_replace(new QCheckBox(tr("Заменить выделенное &экземпляром шаблона"), this))
{
    setWindowTitle(tr("Шаблон из выделения"));
    m_name->setObjectName(QStringLiteral("name"));
    m_name->selectAll();
    m_replace->setObjectName(QStringLiteral("replace"));
    m_replace->setChecked(true);
    auto *hint = new QLabel(tr("Экземпляр покажет те же сигналы на том же месте и будет следовать "
                               "за шаблоном. Без замены шаблон открывается отдельным окном по "
                               "действию."),
                            this);
    hint->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *make = buttons->addButton(tr("Сделать"), QDialogButtonBox::AcceptRole);
    buttons->addButton(tr("Отмена"), QDialogButtonBox::RejectRole);
    make->setDefault(true);
    auto *form = new QFormLayout;
    form->addRow(tr("&Имя шаблона"), m_name);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_replace);
    layout->addWidget(hint);
    layout->addWidget(buttons);
    setMinimumWidth(440);
    connect(m_name, &QLineEdit::textChanged, make,
            [this, make] { make->setEnabled(!name().isEmpty()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QString TemplateDialog::name() const
{
    return m_name->text().replace('/', ' ').simplified();
}

TemplateMaker::Originals TemplateDialog::originals() const
{
    return m_replace->isChecked() ? TemplateMaker::Originals::Replace
                                  : TemplateMaker::Originals::Stay;
}

} // namespace Editor
