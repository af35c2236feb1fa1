#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QWidget>

#include <functional>

class QHBoxLayout;
class QToolButton;

namespace Nodes {
class NodesCollection;
struct PropertyDescriptor;
} // namespace Nodes

namespace Editor {

/// What an editor of a value knows of the place where the value goes. A value.
struct ValueContext
{
    const Nodes::PropertyDescriptor *descriptor = nullptr; ///< null: a plain line of text
    Nodes::NodeLink node{};                                ///< the first of those edited
    const Nodes::NodesCollection *project = nullptr;
    /// Shows a node in the tree of the project; may be empty.
    std::function<void(const Nodes::NodeLink &)> reveal{};
};

/// Editor of one value in its row: from the text of project files and back to it, unchanged as long
/// as nobody touches it. Dialogs that it opens are its children and go with it. GUI thread.
class ValueEditor : public QWidget
{
    Q_OBJECT

public:
    ValueEditor(const ValueContext &context, QWidget *parent);
    ~ValueEditor() override;

    virtual void setText(const QString &text) = 0;
    virtual QString text() const = 0;

    /// Shows the value; `isMixed`: that of the first of several nodes which differ. A line then
    /// says so instead, and nothing is taken before it is touched.
    void showValue(const QString &text, bool isMixed);
    /// Whether the user has changed the value since it was set or taken.
    bool isTouched() const { return m_isTouched; }
    void setTouched(bool isTouched) { m_isTouched = isTouched; }
    /// Says why the value was not taken; "" that it was.
    void showError(const QString &reason);
    const QString &error() const { return m_error; }

signals:
    /// The value changed on the way: a number is being spun.
    void stepped();
    /// The value is to be taken and the editor closed.
    void finished();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    const ValueContext &context() const { return m_context; }
    const Nodes::PropertyDescriptor &descriptor() const { return *m_context.descriptor; }
    /// Fills the row; it gets the keyboard.
    void setMain(QWidget *widget);
    /// Says what is odd about what is being written; "": nothing. It can be taken nevertheless.
    void showRemark(const QString &text);
    QToolButton *addButton(const QString &text, const QString &tip);
    void touch() { m_isTouched = true; }
    /// Touched and finished.
    void finish();
    /// Finished with what a dialog gave; nothing when that is what is there.
    void takeText(const QString &text);

private:
    void tell(const QString &text, const QColor &ground);

    ValueContext m_context;
    QHBoxLayout *m_layout;
    QString m_error;
    bool m_isTouched = false;
};

} // namespace Editor
