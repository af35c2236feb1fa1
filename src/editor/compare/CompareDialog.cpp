#include "editor/compare/CompareDialog.h"

#include "editor/compare/CompareView.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace Editor {

CompareDialog::CompareDialog(QWidget *parent) : QDialog(parent), m_view(new CompareView(this))
{
    setWindowTitle(tr("Сравнение проектов"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(1240, 680);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *close = buttons->addButton(tr("Закрыть"), QDialogButtonBox::RejectRole);
    close->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_view, 1);
    layout->addWidget(buttons);
    m_view->setFocus();
}

} // namespace Editor
