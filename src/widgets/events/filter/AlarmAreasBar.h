#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/events/filter/AlarmArea.h"

#include <QScrollArea>

#include <string>
#include <vector>

class QPushButton;

namespace Widgets {

class WrapLayout;

/// The areas of a list that stands by area: how many alarms each has, and a button that folds its
/// rows in or out. GUI thread.
class WIDGETS_EXPORT AlarmAreasBar : public QScrollArea
{
    Q_OBJECT

public:
    explicit AlarmAreasBar(QWidget *parent = nullptr);

    /// In the order of the list.
    void setAreas(const std::vector<AlarmArea> &areas);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void folded(const QString &area, bool isFolded);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void rebuild(const std::vector<AlarmArea> &areas);
    static void show(QPushButton &button, const AlarmArea &area);
    int wantedHeight() const;

    QWidget *m_content = nullptr;
    WrapLayout *m_row = nullptr;
    std::vector<std::string> m_names;
    std::vector<QPushButton *> m_buttons;
};

} // namespace Widgets
