#pragma once

#include <QDialog>

class QLabel;

namespace Editor {

/// Takes the combination of keys that is pressed: any, Escape and Enter too. Left with the mouse.
/// Deletes itself when closed.
class KeysWindow : public QDialog
{
    Q_OBJECT

public:
    explicit KeysWindow(QWidget *parent);
    ~KeysWindow() override;

    /// As project files have it; "" before one is pressed.
    const QString &keys() const { return m_keys; }

protected:
    bool event(QEvent *event) override;

private:
    QString m_keys{};
};

} // namespace Editor
