#pragma once

#include "widgets/WidgetsExport.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace Widgets {

/// Line below an event list: how many rows there are, what has come unseen, how far the journal was
/// read, and what the list does not show. GUI thread.
class WIDGETS_EXPORT EventStatusBar : public QWidget
{
    Q_OBJECT

public:
    explicit EventStatusBar(QWidget *parent = nullptr);

    /// `sources`: how many the list is limited to; 0: it is not.
    void setCounts(int shown, int held, int sources = 0);
    QString counts() const;
    /// Rows that came and are out of sight.
    void setNew(int count);
    int newCount() const { return m_newCount; }
    void setReading(bool isReading);
    /// What the operator has to know of what he sees; "" for nothing.
    void setNote(const QString &note);
    QString note() const;

signals:
    void newestAsked();
    void cancelled();

private:
    QLabel *m_counts;
    QPushButton *m_new;
    QLabel *m_note;
    QLabel *m_reading;
    QPushButton *m_cancel;
    int m_newCount = 0;
};

} // namespace Widgets
