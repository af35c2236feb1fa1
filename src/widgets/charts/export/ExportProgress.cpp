#include "widgets/charts/export/ExportProgress.h"

#include "widgets/dialogs/DialogLook.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace Widgets {

ExportProgress::ExportProgress(QWidget *parent)
    : BasicDialog(parent), m_text(new QLabel(this)), m_bar(new QProgressBar(this))
{
    ApplyDialogLook(*this);
    setWindowTitle(QStringLiteral("Сохранение данных"));
    setMinimumWidth(420);
    MakeLegible(*m_text);
    MakeLegible(*m_bar);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_bar->setRange(0, 100);
    auto *cancel = new QPushButton(QStringLiteral("Отмена"), this);
    MakeTouchable(*cancel);
    connect(cancel, &QPushButton::clicked, this, &ExportProgress::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(m_bar);
    layout->addWidget(cancel, 0, Qt::AlignRight);
}

void ExportProgress::setText(const QString &text)
{
    m_text->setText(text);
}

void ExportProgress::setPercent(int percent)
{
    m_bar->setValue(percent);
}

void ExportProgress::reject()
{
    emit cancelled();
    BasicDialog::reject();
}

} // namespace Widgets
