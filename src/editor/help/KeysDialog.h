#pragma once

#include <QDialog>

class QLineEdit;
class QMainWindow;
class QTreeWidget;
class QTreeWidgetItem;

namespace Editor {

/// Which keys do what: those of the menus as they are now, of the project tree, of scenes and
/// tables. GUI thread.
class KeysDialog : public QDialog
{
    Q_OBJECT

public:
    explicit KeysDialog(QWidget *parent = nullptr);

    /// Every action of the window's menus that has keys.
    void addMenus(const QMainWindow &window);
    /// Rows shown that have the text in words, or in keys.
    void search(const QString &text);

private:
    QTreeWidgetItem *group(const QString &title);
    static void add(QTreeWidgetItem &below, const QString &what, const QString &keys);

    QLineEdit *m_search;
    QTreeWidget *m_rows;
};

} // namespace Editor
