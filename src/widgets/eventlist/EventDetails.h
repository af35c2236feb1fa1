#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace Nodes {
class Result;
class systemCore;
} // namespace Nodes

namespace Widgets {

class JournalAsker;

/// All of one event, as plain text of any length. GUI thread.
class WIDGETS_EXPORT EventDetails : public QWidget
{
    Q_OBJECT

public:
    explicit EventDetails(QWidget *parent = nullptr);

    /// `isCut`: something of it is missing, which is read from the journal of `model`; may be null.
    void setEvent(const Nodes::BasicEvent &event, bool isCut, Nodes::systemCore *model);
    void clear();
    /// Everything, a line for each thing that the event has.
    static QString textOf(const Nodes::BasicEvent &event);
    QString shownText() const;

private:
    void show(const Nodes::BasicEvent &event);
    void onAnswered(const Nodes::Result &result, const std::vector<Nodes::BasicEvent> &events);
    void copy() const;

    QLabel *m_head;
    QPlainTextEdit *m_text;
    QPushButton *m_copy;
    JournalAsker *m_asker;
    Nodes::BasicEvent m_event;
    unsigned long m_awaited = 0; // event whose whole text was asked for
};

} // namespace Widgets
