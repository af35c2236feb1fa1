#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/events/details/AlarmCommands.h"

#include "nodes/events/BasicEvent.h"

#include <QWidget>

#include <array>
#include <optional>
#include <vector>

class QLabel;
class QPushButton;

namespace Widgets {

class WrapLayout;

/// What an operator has to know of one alarm to act on it, and the buttons to do so. GUI thread.
class WIDGETS_EXPORT AlarmDetails : public QWidget
{
    Q_OBJECT

public:
    explicit AlarmDetails(QWidget *parent = nullptr);

    /// Shows the alarm as it stands; without one it asks to choose one.
    void setAlarm(const std::optional<Nodes::BasicEvent> &alarm);
    /// There is nothing to choose from while none is shown.
    void setListEmpty(bool isEmpty);
    const std::optional<Nodes::BasicEvent> &alarm() const { return m_alarm; }
    /// The present time, for what is left to respond.
    void setNow(Nodes::Timestamp now);
    /// Makes one row of the buttons the least width, unless it is wider than that.
    void setRoom(int width);

signals:
    void wanted(AlarmCommands::Command command, const Nodes::BasicEvent &alarm);

private:
    enum Text { Cause, Consequence, Response, TextCount };

    QWidget *makeGuidance();
    void addButton(AlarmCommands::Command command, const QString &text);
    void showFacts();
    void showGuidance();
    void showButtons();

    QLabel *m_sign;
    QLabel *m_title;
    QLabel *m_facts;
    QLabel *m_time;
    std::array<QLabel *, TextCount> m_texts{};
    QLabel *m_obstacles;
    WrapLayout *m_buttonRow;
    std::vector<std::pair<AlarmCommands::Command, QPushButton *>> m_buttons;
    std::optional<Nodes::BasicEvent> m_alarm;
    bool m_isListEmpty = true;
    Nodes::Timestamp m_now = 0;
};

} // namespace Widgets
