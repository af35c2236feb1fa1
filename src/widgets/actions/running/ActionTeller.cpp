#include "widgets/actions/running/ActionTeller.h"

#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/RefusalBox.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/desktop/Screens.h"

#include "nodes/model/ConfigNode.h"

#include <QAbstractButton>
#include <QApplication>

#include <utility>

namespace Widgets {

ActionTeller &ActionTeller::instance()
{
    static QPointer<ActionTeller> shared;
    if (!shared)
        shared = new ActionTeller(QCoreApplication::instance());
    return *shared;
}

namespace {

// What lies above all other windows there, the alarm window for one: a box below it would not be
// seen. Null when nothing does.
QWidget *topmostOn(int display)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        const bool isDialog = window->windowType() == Qt::Dialog && !window->isModal();
        if (isDialog && window->isVisible() && !window->isMinimized() &&
            window->windowFlags().testFlag(Qt::WindowStaysOnTopHint) &&
            ScreenNumber(window) == display)
            return window;
    }
    return nullptr;
}

} // namespace

// It does not take the keyboard away from what is being entered.
RefusalBox *ActionTeller::makeNotice(const QString &title, int display, QMessageBox::Icon icon)
{
    QWidget *modal = QApplication::activeModalWidget();
    const DesktopContext *desktop = DesktopContext::current();
    QWidget *frame = desktop ? desktop->getFrame(display) : nullptr;
    DialogRequest request;
    QWidget *topmost = topmostOn(display);
    request.parent = modal ? modal : topmost ? topmost : frame;
    request.display = display;
    auto *box = Dialogs::make<RefusalBox>(request);
    box->setIcon(icon);
    box->setWindowTitle(title);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setAttribute(Qt::WA_ShowWithoutActivating);
    box->setAttribute(Qt::WA_QuitOnClose, false);
    box->setWindowModality(Qt::NonModal);
    return box;
}

void ActionTeller::notify(const QString &title, const QString &text, std::optional<int> display,
                          QMessageBox::Icon icon)
{
    QPointer<RefusalBox> &notice = m_notices[title];
    if (notice && notice->isVisible()) {
        QWidget *topmost = topmostOn(ScreenNumber(notice));
        if (topmost && notice->parentWidget() != topmost) { // it has come up since
            notice->setParent(topmost, notice->windowFlags());
            notice->show();
        }
        notice->add(text);
        notice->raise();
        return;
    }
    const int number = display.value_or(ScreenNumber(QApplication::activeWindow()));
    notice = makeNotice(title, number, icon);
    notice->add(text);
    notice->show();
}

void ActionTeller::warn(const QString &text)
{
    if (m_warning) {
        m_warning->add(text);
        return;
    }
    // On the heap and guarded: it may be taken away while it waits.
    m_warning = Dialogs::make<RefusalBox>();
    m_warning->setIcon(QMessageBox::Information);
    m_warning->setWindowTitle(QStringLiteral("Внимание"));
    m_warning->add(text);
    m_warning->resize(200, 100);
    // The second letter is Latin; operators' scripts look for exactly this text.
    m_warning->button(QMessageBox::Ok)->setText(QStringLiteral("ОK"));
    m_warning->exec();
    delete m_warning;
}

void ActionTeller::journalOnce(const Nodes::ConfigNode &node, const std::string &text)
{
    const QString key = QString::fromStdString(node.GetPath() + '\n' + text);
    if (m_journalled.contains(key))
        return;
    m_journalled.insert(key);
    node.StoreMessage(Nodes::LevelWarning, text, node.GetNodeLink());
}

void ActionTeller::dismiss()
{
    for (const QPointer<RefusalBox> &notice : std::exchange(m_notices, {}))
        delete notice;
    if (m_warning)
        m_warning->reject();
}

} // namespace Widgets
