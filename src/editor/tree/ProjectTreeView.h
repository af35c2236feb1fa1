#pragma once

#include <QTreeView>

namespace Editor {

/// The tree view of the project panel: keeps the keys of its panel from the menus of the window
/// while it has the focus. GUI thread.
class ProjectTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit ProjectTreeView(QWidget *parent = nullptr);
    ~ProjectTreeView() override;

signals:
    /// A key that is none of the view's own; a slot that acts on it sets `isTaken`.
    void keyAsked(const QKeySequence &keys, bool isRun, bool &isTaken);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void startDrag(Qt::DropActions actions) override;
};

} // namespace Editor
