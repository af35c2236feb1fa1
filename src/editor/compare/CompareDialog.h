#pragma once

#include <QDialog>

namespace Editor {

class CompareView;

/// A comparison that is looked at before a question is answered. GUI thread.
class CompareDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CompareDialog(QWidget *parent = nullptr);

    CompareView &view() const { return *m_view; }

private:
    CompareView *m_view;
};

} // namespace Editor
