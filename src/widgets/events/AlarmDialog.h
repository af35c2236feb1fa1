#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/engine/AlarmOccurrence.h"
#include "utils/relay/NodeRelay.h"

#include <QTimer>
#include <QWidget>

#include <functional>

class QCheckBox;
class QPushButton;

namespace Widgets {

class AlarmAreasBar;
class AlarmFilterBar;
class AlarmFiltering;
class AlarmFloodView;
class AlarmHeadline;
class AlarmPanes;
class ModelManager;
class TableAlarms;
class WrapLayout;

/// The alarm window's content: what the list says of itself, the table and its buttons. What is
/// shown follows the alarm subsystem's settings. GUI thread.
class WIDGETS_EXPORT AlarmDialog : public QWidget
{
    Q_OBJECT

public:
    explicit AlarmDialog(QWidget *parent = nullptr);
    ~AlarmDialog() override;

    ModelManager &manager() const { return *m_manager; }
    TableAlarms &table() const { return *m_table; }
    AlarmPanes &panes() const { return *m_panes; }
    /// Lets the sounds be heard again.
    void soundOn();
    /// Height of what stands beside the list and its buttons now, pixels.
    int besidesHeight() const { return m_besides; }
    /// Makes one row of the buttons the least width, unless it is wider than that.
    void setRoom(int width);

    QSize sizeHint() const override;

signals:
    void closeRequested();
    /// Something came up beside the list or went: another height leaves it its rows. `before` is
    /// what besidesHeight was.
    void heightWanted(int before);

public slots:
    /// Reads the alarm subsystem's settings anew.
    void onUpdateProperties();

private:
    QPushButton *makeButton(const QString &text);
    /// A button that acknowledges what `choose` picked of that revision of the list when the button
    /// went down, whatever has come meanwhile.
    using Choice = std::function<Nodes::AlarmOccurrences(unsigned revision)>;
    QPushButton *makeAcknowledgeButton(const QString &text, Choice choose);
    Nodes::AlarmOccurrences selected(unsigned revision) const;
    void addAcknowledgeButtons(WrapLayout &row);
    void addCheckBoxes(WrapLayout &row);
    void buildHead();
    void buildPanes();
    void fold(int pane, bool isOut);
    /// `isFolding`: somebody has just folded a part out or in, or chosen what it shows.
    void tellHeight(bool isFolding);
    void onSoundToggled(bool isMuted);
    void summarise();
    void applySizes();

    ModelManager *m_manager;
    WrapLayout *m_controls;
    QPushButton *m_soundButton = nullptr;
    QPushButton *m_closeButton = nullptr;
    QPushButton *m_acknowledgeAllButton = nullptr;      // null: not allowed here
    QPushButton *m_acknowledgeSelectedButton = nullptr; // null: not allowed here
    TableAlarms *m_table;
    AlarmHeadline *m_headline = nullptr;
    AlarmFilterBar *m_filterBar = nullptr;
    AlarmFiltering *m_filtering = nullptr;
    AlarmAreasBar *m_areasBar = nullptr;
    AlarmFloodView *m_flood = nullptr;
    AlarmPanes *m_panes = nullptr;
    int m_besides = 0;      // height of what stands beside the list, as last told
    int m_besidesWidth = 0; // at that width

    QTimer m_summary;                 // a flood is told some times a second
    Nodes::AlarmOccurrences m_chosen; // while a button is down
    Utils::NodeRelay m_relay;
};

} // namespace Widgets
