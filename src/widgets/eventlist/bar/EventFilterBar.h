#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/EventRowFilter.h"

#include <QTimer>
#include <QWidget>

class QLineEdit;
class QPushButton;

namespace Widgets {

class ChoiceButton;

/// What of the rows of a list is seen: a part of their text, levels, types, users; and the keys of
/// what is done with them. GUI thread.
class WIDGETS_EXPORT EventFilterBar : public QWidget
{
    Q_OBJECT

public:
    explicit EventFilterBar(QWidget *parent = nullptr);

    EventRowFilter filter() const;
    /// Tells nobody.
    void setFilter(const EventRowFilter &filter);
    /// To choose from: names of those that the rows have.
    void setUsers(const QStringList &users);
    void setDetailsShown(bool isShown);
    bool isDetailsShown() const;

public slots:
    void reset();

signals:
    void changed();
    void usersAsked();
    void detailsToggled(bool isShown);
    void exportAsked();

private:
    void addChoices();
    void addKeys();
    void openKeyboard();

    QLineEdit *m_search;
    ChoiceButton *m_levels;
    ChoiceButton *m_types;
    ChoiceButton *m_users;
    QPushButton *m_reset;
    QPushButton *m_details;
    QPushButton *m_export;
    QTimer m_typing;
};

} // namespace Widgets
