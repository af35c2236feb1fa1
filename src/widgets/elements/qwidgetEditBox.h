#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/ElementBinding.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/LabelText.h"
#include "widgets/elements/ShowsValue.h"

#include "nodes/values/Quality.h"

#include <QLineEdit>

#include <functional>
#include <memory>

class QPushButton;
class QValidator;

namespace Nodes {
class widgetEditBox;
}

namespace Widgets {

/// Value of a Nodes::widgetEditBox that the operator may replace. At rest it draws the value; a
/// press starts editing, Enter and Tab write, Escape writes what was there before, leaving the box
/// otherwise writes nothing. What is typed is never overwritten by values that come meanwhile. GUI
/// thread.
class WIDGETS_EXPORT qwidgetEditBox : public QLineEdit, public IWidget, public ShowsValue
{
    Q_OBJECT

public:
    qwidgetEditBox(Nodes::BasicWidget *node, QWidget *parent);
    ~qwidgetEditBox() override;

    /// The value text, dashes without one; while editing, still the value before.
    QString shownText() const override;
    Nodes::Quality shownQuality() const override { return m_quality; }
    bool isEditing() const { return m_isEditing; }
    /// Why what is typed now would not be written; empty while it would be.
    QString inputProblem() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void valueUpdated(Nodes::SignalValue value) override;
    void updateProperty(Nodes::BasicProperty *property) override;
    void isActiveChanged(bool on) override;

public slots:
    void onValueUpdated(Nodes::SignalValue value) override;
    void onUpdateProperties(Nodes::BasicProperty *property) override;

protected:
    void onActive(bool on) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private slots:
    void onBtnUpClicked();
    void onBtnDownClicked();
    void onBtnKeyboardClicked();
    void onTextChanged(const QString &text);
    void onEditingFinished();

private:
    // Value and node
    bool setValue();
    /// An error value, which is refused like any other, for a text that is no value of the type.
    static Nodes::SignalValue convertValue(const QString &text, Nodes::enSignalValueType type);
    bool UserHaveWritePermissions() const;
    bool isInputAllowed() const;
    bool isAcceptable(const QString &text) const;
    void sepCountCalc();
    void takeShownText();
    void applyValidator();

    // Editing
    void beginEditing();
    void closeEditing();
    void cancelEditing();
    void finishBy(bool isEscape);
    void moveOn(const QKeyEvent &event);
    void step(double direction);
    QString steppedText(double value) const;
    /// Runs a dialog while values wait; false also when the box died meanwhile.
    bool ask(const std::function<bool()> &dialog);
    bool askText(QString &text);
    bool askNumber(QString &text);
    bool isOverButton() const;
    bool isHit(const QPoint &globalPosition) const;

    // Looks
    QFont getCurrentFont() const;
    void applyFrame();
    void resizeButtons();
    void updateButtons();
    void drawValue(QPainter &painter);
    void drawRotatedText(QPainter *painter);
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
    int m_decimals = -1;         ///< shown; -1: no rule
    double m_step = 0;
    QString m_pending;  ///< text shown and to be written
    QString m_previous; ///< text from before the edit
    Nodes::SignalValue m_previousValue;
    Nodes::Quality m_quality = Nodes::Quality::Good;
    std::unique_ptr<QValidator> m_validator;
    LabelText m_layout;
    ElementBinding m_binding;
};

} // namespace Widgets
