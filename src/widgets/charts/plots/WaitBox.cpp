#include "widgets/charts/plots/WaitBox.h"

#include <QAbstractButton>
#include <QEventLoop>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QShowEvent>
#include <QWindow>

namespace Widgets {

namespace {

constexpr int lastStep = 3;

// A scene's element has no window of the desktop of its own.
QWindow *desktopWindowOf(const QWidget &widget)
{
    const QWidget *window = widget.window();
    const QGraphicsProxyWidget *proxy = window->graphicsProxyWidget();
    if (!proxy || !proxy->scene() || proxy->scene()->views().isEmpty())
        return window->windowHandle();
    return desktopWindowOf(*proxy->scene()->views().first());
}

} // namespace

WaitBox::WaitBox(QWidget *plot)
    : QMessageBox(NoIcon, QStringLiteral("Ожидание"), QStringLiteral("Запрос данных ..."), NoButton,
                  plot, Qt::Dialog | Qt::FramelessWindowHint | Qt::BypassGraphicsProxyWidget),
      m_plot(plot)
{
    QWidget::setWindowModality(Qt::WindowModal); // a message box's own makes a framed sheet of it
    setStandardButtons(NoButton);
    setStyleSheet(QStringLiteral("QMessageBox { border: 1px solid black;}QLabel {color: black};"));
    m_ticks.setInterval(Tick);
    m_appearance.setSingleShot(true);
    m_limit.setSingleShot(true);
    connect(&m_ticks, &QTimer::timeout, this, &WaitBox::onTick);
    connect(&m_appearance, &QTimer::timeout, this, &WaitBox::appear);
    connect(&m_limit, &QTimer::timeout, this, &WaitBox::onTimeLimit);
    m_ticks.start();
}

// A loop of its own: that of a dialog ends only for one that has been shown.
int WaitBox::exec()
{
    if (m_isRunning)
        return Rejected;
    const QPointer<WaitBox> alive(this);
    m_isRunning = true;
    m_isTimeUp = false;
    setResult(Rejected);
    setEnabled(true); // the plot is not, and its children went with it
    QEventLoop loop;
    connect(this, &QDialog::finished, &loop, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    m_appearance.start(Delay);
    m_limit.start(m_timeLimit);
    loop.exec(QEventLoop::DialogExec);
    if (!alive)
        return Rejected;
    m_appearance.stop();
    m_limit.stop();
    m_isRunning = false;
    hide();
    return result();
}

// Nothing waits in front of the operator for a plot that he does not see.
void WaitBox::appear()
{
    if (!m_isRunning || !m_plot->isVisible())
        return;
    winId(); // so that there is a window to belong to
    if (windowHandle())
        windowHandle()->setTransientParent(desktopWindowOf(*m_plot));
    show();
}

void WaitBox::onTimeLimit()
{
    m_isTimeUp = true;
    reject();
}

void WaitBox::onTick()
{
    static const QString ends[lastStep + 1] = {QStringLiteral("   "), QStringLiteral(".  "),
                                               QStringLiteral(".. "), QStringLiteral("...")};
    if (!isHidden())
        setText(QStringLiteral("Запрос данных ") + ends[m_step]);
    m_step = m_step < lastStep ? m_step + 1 : 0;
    if (m_isRunning && !isHidden() && !m_plot->isVisible())
        hide();
}

void WaitBox::showEvent(QShowEvent *event)
{
    const QList<QAbstractButton *> buttons = findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons)
        button->hide();
    adjustSize();
    move(m_plot->mapToGlobal(m_plot->rect().center()) - rect().center());
    QMessageBox::showEvent(event);
    const QList<QAbstractButton *> added = findChildren<QAbstractButton *>();
    for (QAbstractButton *button : added)
        button->hide();
}

void WaitBox::keyPressEvent(QKeyEvent *event)
{
    event->accept();
    if (event->key() == Qt::Key_Escape)
        reject();
}

// Closing it by the desktop's means is the same as Escape.
void WaitBox::closeEvent(QCloseEvent *)
{
    reject();
}

} // namespace Widgets
