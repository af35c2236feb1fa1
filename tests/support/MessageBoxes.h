#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

/// Presses one button of every message box that opens while it lives, as an operator would, and
/// notes what the box said. A box without that button has its first one pressed.
class MessageBoxes : public QObject
{
public:
    explicit MessageBoxes(QMessageBox::StandardButton pressed = QMessageBox::Ok)
        : m_pressed(pressed)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *box = qobject_cast<QMessageBox *>(watched);
        if (!box || event->type() != QEvent::Show)
            return false;
        shown << box->windowTitle() + ": " + box->text();
        QAbstractButton *wanted = box->button(m_pressed);
        QAbstractButton *button = wanted ? wanted : box->buttons().first();
        captions << button->text();
        if (whileOpen)
            whileOpen();
        QTimer::singleShot(0, box, [button] { button->click(); });
        return false;
    }

    QStringList shown;    ///< "title: text"
    QStringList captions; ///< of the buttons pressed
    std::function<void()> whileOpen;

private:
    QMessageBox::StandardButton m_pressed;
};
