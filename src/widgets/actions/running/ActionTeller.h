#pragma once

#include "widgets/WidgetsExport.h"

#include <QHash>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QSet>

#include <optional>

namespace Nodes {
class ConfigNode;
}

namespace Widgets {

class RefusalBox;

/// How operators learn that what they asked for was not done. Whatever fails goes through here, so
/// that refusals never stack: one box of a title tells them all. GUI thread.
class WIDGETS_EXPORT ActionTeller : public QObject
{
    Q_OBJECT

public:
    static ActionTeller &instance();

    /// Beside the operator's work: nobody has to answer it. On a 0-based display, or that of the
    /// active window.
    void notify(const QString &title, const QString &text, std::optional<int> display,
                QMessageBox::Icon icon = QMessageBox::Warning);
    /// "Внимание", modal, for what was entered into an element; returns when it was answered, or at
    /// once when such a box is up already, which then tells this too.
    void warn(const QString &text);
    /// A warning in the journal about a node; the same text about the same node only once.
    void journalOnce(const Nodes::ConfigNode &node, const std::string &text);
    /// Takes the boxes away: the station ends.
    void dismiss();

private:
    using QObject::QObject;
    static RefusalBox *makeNotice(const QString &title, int display, QMessageBox::Icon icon);

    QHash<QString, QPointer<RefusalBox>> m_notices; ///< by title
    QPointer<RefusalBox> m_warning;
    QSet<QString> m_journalled;
};

} // namespace Widgets
