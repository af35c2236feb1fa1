#include "widgets/tools/problems/ProblemsDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/tools/problems/ProblemsView.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/navigation/SourceJump.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace Widgets {

ProblemsDialog::ProblemsDialog(QWidget *parent)
    : BasicDialog(parent), m_view(new ProblemsView(this)), m_hint(new QLabel(this))
{
    setWindowTitle(QStringLiteral("Проверка проекта"));
    resize(1100, 560);
    MakeLegible(*m_hint);
    m_hint->setTextFormat(Qt::PlainText);
    m_hint->setWordWrap(true);
    m_hint->setText(QStringLiteral("Двойной щелчок открывает окно, где узел показан."));
    auto *close = new QPushButton(QStringLiteral("Закрыть"), this);
    close->setAutoDefault(false);
    MakeTouchable(*close);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(m_hint, 1);
    bottom->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_view, 1);
    layout->addLayout(bottom);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_view, &ProblemsView::nodeActivated, this, &ProblemsDialog::goTo);
}

void ProblemsDialog::check(const Nodes::systemCore *core)
{
    m_view->check(core);
}

void ProblemsDialog::goTo(const Nodes::NodeLink &node)
{
    if (SourceJump::canJump(node))
        (void)SourceJump::jump(node, ScreenNumber(this)); // tells refusals itself
    else
        m_hint->setText(QStringLiteral("Узел «%1» не показан ни в одном окне.")
                            .arg(QString::fromStdString(node.GetLinkName(true))));
}

} // namespace Widgets
