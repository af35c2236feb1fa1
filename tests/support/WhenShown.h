#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>

/// Acts once, on the first modal window or popup of the kind that is up while it lives.
template <class Window> class WhenShown
{
public:
    explicit WhenShown(std::function<void(Window &)> act) : m_act(std::move(act))
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start(5);
    }

private:
    void look()
    {
        QWidget *popup = QApplication::activePopupWidget();
        auto *window = qobject_cast<Window *>(popup ? popup : QApplication::activeModalWidget());
        if (!window || !window->isVisible())
            return;
        m_timer.stop();
        m_act(*window);
    }

    std::function<void(Window &)> m_act;
    QTimer m_timer;
};
