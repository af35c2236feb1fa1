#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/events/filter/AlarmFilter.h"

#include <QTimer>
#include <QWidget>

#include <array>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace Widgets {

class WrapLayout;

/// The controls of a filter of alarms, sized for fingers: priorities by their signs, states, area
/// and text. GUI thread.
class WIDGETS_EXPORT AlarmFilterBar : public QWidget
{
    Q_OBJECT

public:
    explicit AlarmFilterBar(QWidget *parent = nullptr);

    /// Shows that choice; tells nobody.
    void setFilter(const AlarmFilter &filter);
    AlarmFilter filter() const;
    /// Areas to choose from. One that is chosen stays, although no alarm is there.
    void setAreas(const QStringList &areas);
    /// Makes one row of the controls the least width, unless it is wider than that.
    void setRoom(int width);

signals:
    /// The operator changed it.
    void changed(const AlarmFilter &filter);

private:
    QPushButton *addToggle(const QString &text);
    void addPriorities();
    void addStates();
    void addArea();
    void addText();
    void keepOne(QPushButton *toggled);
    void openKeyboard();
    void tell();

    WrapLayout *m_row;
    std::array<QPushButton *, AlarmFilter::PriorityCount> m_priorities{};
    std::array<QPushButton *, AlarmFilter::StateCount> m_states{};
    QComboBox *m_area = nullptr;
    QLineEdit *m_text = nullptr;
    QTimer m_typing; // a word is one change
    bool m_isSetting = false;
};

} // namespace Widgets
