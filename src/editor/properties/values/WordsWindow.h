#pragma once

#include "nodes/model/properties/PropertyDescriptor.h"

#include <QDialog>

class QListWidget;

namespace Editor {

/// Ticks words and gives them an order, with the mouse or with Space and Ctrl+Up, Ctrl+Down.
/// Deletes itself when closed.
class WordsWindow : public QDialog
{
    Q_OBJECT

public:
    /// `text`: tokens of choices, blanks between; those that are no choices are kept.
    WordsWindow(const std::vector<Nodes::PropertyChoice> &choices, const QString &text,
                QWidget *parent);
    ~WordsWindow() override;

    QString text() const;

private:
    void add(const QString &token, const QString &name, bool isTicked);
    void move(int rows);

    QListWidget *m_list;
};

} // namespace Editor
