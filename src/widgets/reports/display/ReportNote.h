#pragma once

#include <QLabel>

namespace Widgets {

/// A line between the keys and the pages of a report: what is wrong with it, or what became of a
/// file. Hidden while there is nothing to tell. GUI thread.
class ReportNote : public QLabel
{
public:
    explicit ReportNote(QWidget *parent);

    /// What is wrong, with a sign in front; "" takes it away.
    void warn(const QString &text);
    void tell(const QString &text);

private:
    void show(const QString &text, const QString &details);
};

} // namespace Widgets
