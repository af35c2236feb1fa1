#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"
#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/elements/input/LiveValueStrip.h"
#include "widgets/elements/painting/LabelText.h"

#include "nodes/values/Quality.h"

#include <QLineEdit>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <string>

class QDialog;
class QPushButton;
class QValidator;

namespace Nodes {
class widgetEditBox;
}

namespace Widgets {

/// Value of a Nodes::widgetEditBox that the operator may replace. At rest it draws the value; a
/// press starts editing, Enter and Tab write, Escape writes what was there before. A press
/// elsewhere, too long a pause, another user and whatever hides the box give the edit up and say
/// so. While it goes on, the live value with its quality stands beside what is typed; neither
/// changes the other. GUI thread.
class WIDGETS_EXPORT qwidgetEditBox : public QLineEdit, public IWidget, public ShowsValue
{
    Q_OBJECT

public:
    using Node = Nodes::widgetEditBox;

    qwidgetEditBox(Nodes::BasicWidget *node, QWidget *parent,
                   const SceneContextPtr &context = SceneContext::process());
    ~qwidgetEditBox() override;

    /// The text of the live value, dashes without one, whatever is being typed.
    QString shownText() const override;
    bool isEditing() const { return m_isEditing; }
    /// Why what is typed now would not be written; empty while it would be.
    QString inputProblem() const;

    /// Where the live value stands while editing, in the box; empty else.
    QRect liveValueRect() const { return m_isEditing ? m_strip.place : QRect(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

signals:
    /// shownText() may be another.
    void shownTextChanged(const QString &text);

protected:
    void onActive(bool on) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private slots:
    void onBtnUpClicked();
    void onBtnDownClicked();
    void onBtnKeyboardClicked();
    void onTextChanged(const QString &text);
    void onEditingFinished();
    void onTimeLimit();

private:
    // Value and node
    bool setValue(const Nodes::SignalValue &value);
    /// What the finished edit asks for; a text left as it was offered stands for the exact value.
    Nodes::SignalValue wantedValue(const QString &typed) const;
    /// An error value, which is refused like any other, for a text that is no value of the type.
    static Nodes::SignalValue convertValue(const QString &text, Nodes::enSignalValueType type);
    bool UserHaveWritePermissions() const;
    bool isInputAllowed() const;
    bool isAcceptable(const QString &text) const;
    /// Why that text is no value to write.
    QString problemOf(const QString &text) const;
    /// Why a text that was undone could not stand; empty where that is plain to see.
    QString undoneReason(const QString &text) const;
    /// Decimals that can be typed.
    int typedDecimals() const;
    void sepCountCalc();
    void takeShownText(const Nodes::SignalValue &value);
    void applyValidator(const Nodes::widgetEditBox &editBox);

    // Editing
    void beginEditing();
    void closeEditing();
    /// Values wait: typing, or a dialog that belongs to it, is under way.
    bool isHeld() const { return m_isUnfinished || m_isDialogOpen; }
    bool isDirty() const { return m_isUnfinished && m_pending != m_startText; }
    bool isSameUser() const;
    /// Notes who begins and with what.
    void noteStart();
    /// Ends the edit, told with the reason if something was typed; "" tells nothing.
    void cancelEditing(const QString &reason);
    /// The same, also out of a dialog that belongs to the edit.
    void abandon(const QString &reason);
    void tell(const QString &text) const;
    void restartLimit();
    void finishBy(bool isEscape);
    void moveOn(const QKeyEvent &event);
    void step(double direction);
    QString steppedText(double value) const;
    /// Runs a dialog of the edit, within the time limit; false also when the box died meanwhile.
    bool ask(QDialog &dialog, int accepted);
    bool confirmed(const QString &typed);
    void report(const Nodes::Result &result);
    bool askText(QString &text);
    bool askNumber(QString &text);
    bool isOverButton() const;
    bool isHit(const QPoint &globalPosition) const;

    // Looks
    QFont getCurrentFont() const;
    void takePlace(const Nodes::widgetEditBox &editBox);
    void takeText(const Nodes::widgetEditBox &editBox);
    void takeButtons(const Nodes::widgetEditBox &editBox);
    void applyFrame(const Nodes::widgetEditBox &editBox);
    void resizeButtons();
    void updateButtons();
    /// Puts typing and live value beside each other, or the box back to rest.
    void layOutTyping();
    void drawValue(QPainter &painter);
    void drawRotatedText(QPainter *painter);
    void drawTyping(QPainter &painter) const;
    void drawProblem(QPainter &painter) const;

    Utils::WatchedNode<Nodes::widgetEditBox> m_editBox; ///< null also for another class
    QPushButton *m_up;
    QPushButton *m_down;
    QPushButton *m_keyboard;
    QFont m_font;
    Qt::Alignment m_alignment;
    QColor m_textColor;
    QRect m_geometry;
    bool m_hasStepButtons = false;
    bool m_hasKeyboardButton = false;
    bool m_opensKeyboard = false;
    bool m_isEditing = false;
    bool m_isIdle = true;
    bool m_isDialogOpen = false; ///< keyboard, question or message: values wait as while editing
    bool m_isUnfinished = false; ///< an edit was begun that neither finished nor was cancelled
    bool m_isRestoring = false;  ///< the finish writes the value from before the edit
    QPointer<QDialog> m_dialog;  ///< keyboard or question, which the end of the edit closes
    QString m_abandoned;         ///< why it was closed
    QTimer m_limit;              ///< runs while editing, from the last input
    int m_decimals = -1;         ///< shown; -1: no rule
    double m_step = 0;
    QString m_pending;  ///< text shown and to be written
    QString m_previous; ///< text of the live value
    Nodes::SignalValue m_previousValue;
    QString m_startText; ///< offered when the edit began
    Nodes::SignalValue m_startValue;
    std::string m_startUser; ///< who began
    LiveValueStrip m_strip;
    std::unique_ptr<QValidator> m_validator;
    LabelText m_layout;
    ElementBinding m_binding;
};

} // namespace Widgets
