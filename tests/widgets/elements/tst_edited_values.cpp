#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/scene/ElementFactory.h"

#include "nodes/visual/BasicWidget.h"

using Nodes::Quality;

namespace {

constexpr const char *nodes = R"(<folder id="10" name="F">
  <memorySignal id="11" name="T" unit="°C" decimals="1" minimum="0" maximum="100"/>
  <memorySignal id="12" name="P" type="bool"/>
  <memorySignal id="13" name="N" type="int"/></folder>
<window id="20" name="W" width="400" height="300">
  <label id="21" name="L" signal="11" text="Котёл 1: " width="160" height="30"/>
  <label id="22" name="Own" signal="11" decimals="3" showUnit="false" width="120" height="30"/>
  <label id="23" name="Switch" signal="12" onText="Открыт" offText="Закрыт" width="90" height="30"/>
  <label id="24" name="Bare" signal="12" width="90" height="30"/>
  <label id="25" name="Count" signal="13" width="90" height="30"/>
  <multiLabel id="31" name="Rest" signal="13" width="90" height="30">
    <state id="32" name="S" from="2" to="3" text="Авария"/>
    <state id="33" name="S" from="0" to="1" text="Готов"/></multiLabel>
  <multiLabel id="34" name="First" signal="13" width="90" height="30">
    <state id="35" name="S" from="5" to="6" text="Пуск"/></multiLabel>
  <bargraph id="41" name="B" signal="11" width="90" height="200"/>
  <editBox id="42" name="E" signal="11" step="0.01" width="90" height="30"/>
  <checkBox id="43" name="C" signal="12" width="30" height="30"/>
  <button id="44" name="K" signal="12" text="Насос" width="90" height="40"/>
  <comboBox id="45" name="O" signal="13" index="1" width="120" height="30">
    <comboItem id="46" name="A" text="Ручной" value="0"/>
    <comboItem id="47" name="B" text="Автомат" value="1"/></comboBox>
  <recorderDisplay id="48" name="D" width="500" height="60">
    <recorderChannel id="49" name="c" signal="11"/></recorderDisplay>
</window>)";

/// One element of the project, whatever its kind.
struct Shown : RuntimeProject
{
    Shown(unsigned long id, Nodes::enWorkMode mode)
        : RuntimeProject(nodes, mode),
          widget(Widgets::ElementFactory::create(node<Nodes::BasicWidget>(id), nullptr))
    {
        dynamic_cast<IWidget &>(*widget).start();
        QCoreApplication::processEvents();
    }
    const Widgets::ShowsValue &values() const
    {
        return dynamic_cast<Widgets::ShowsValue &>(*widget);
    }
    /// Anything of the colour that stands for data that are not good.
    bool hasMark() const
    {
        const QImage look = widget->grab().toImage();
        for (int y = 0; y < look.height(); ++y) {
            for (int x = 0; x < look.width(); ++x) {
                const QColor color = look.pixelColor(x, y);
                if (color.red() > color.green() + 40 && color.blue() > color.green() + 30)
                    return true;
            }
        }
        return false;
    }

    std::unique_ptr<QWidget> widget;
};

} // namespace

class EditedValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void theFormOfAValueStandsInWhileEdited_data()
    {
        const Rows<int, QString> row("id", "text");
        row("decimals and unit of the signal", 21, "Котёл 1: ##.# °C");
        row("its own, no unit", 22, "#.###");
        row("texts of a switch", 23, "Закрыт");
        row("a switch without texts", 24, "##");
        row("a whole number", 25, "##");
        row("the state of rest", 31, "Готов");
        row("the first state, no rest", 34, "Пуск");
        row("bargraph", 41, "##.# °C");
        row("edit box, decimals of its step", 42, "##.##");
        row("check box", 43, "0");
        row("button", 44, "Насос");
        row("combo box, what it has in the project", 45, "Автомат");
        row("recorder display", 48, "##.# °C");
    }
    void theFormOfAValueStandsInWhileEdited()
    {
        QFETCH(int, id);
        QFETCH(QString, text);
        for (const bool isSilent : {true, false}) { // never heard of, or heard of and lost
            const auto publish = [isSilent](const Shown &shown) {
                for (const unsigned long signal : {11UL, 12UL, 13UL}) {
                    if (!isSilent)
                        shown.publish(signal, Nodes::SignalValue(5.0), Quality::Stale);
                }
                QCoreApplication::processEvents();
            };
            {
                const Shown edited(id, Nodes::WorkModeEditing);
                publish(edited);
                QCOMPARE(edited.values().shownText(), text);
                QCOMPARE(edited.values().shownQuality(), Quality::Good);
                QVERIFY(!edited.hasMark());
            }
            const Shown running(id, Nodes::WorkModeRuntime);
            publish(running);
            QTRY_COMPARE(running.values().shownQuality(), isSilent ? Quality::Bad : Quality::Stale);
            QTRY_VERIFY(running.hasMark());
            QVERIFY(!running.values().shownText().contains('#'));
        }
    }

    // A station that edits while it runs goes on showing what it knows.
    void aGoodValueIsShownWhileEdited()
    {
        for (const auto mode : {Nodes::WorkModeEditing, Nodes::WorkModeRuntime}) {
            Shown shown(21, mode);
            shown.publish(11, 42.0);
            QTRY_COMPARE(shown.values().shownText(), QStringLiteral("Котёл 1: 42.0 °C"));
            shown.publish(11, 42.0, Quality::Bad);
            const bool isEdited = mode == Nodes::WorkModeEditing;
            QTRY_COMPARE(shown.values().shownText(), isEdited ? QStringLiteral("Котёл 1: ##.# °C")
                                                              : QStringLiteral("Котёл 1: ----"));
        }
    }

    void aBarWithoutValueIsAnOutline()
    {
        Shown edited(41, Nodes::WorkModeEditing);
        const QImage outline = edited.widget->grab().toImage();
        edited.publish(11, 50.0);
        QTRY_COMPARE(edited.values().shownText(), QStringLiteral("50.0 °C"));
        const QImage filled = edited.widget->grab().toImage();
        int darker = 0;
        for (int y = 0; y < filled.height(); ++y)
            for (int x = 0; x < filled.width(); ++x)
                darker += qGray(filled.pixel(x, y)) + 20 < qGray(outline.pixel(x, y)) ? 1 : 0;
        QVERIFY2(darker > 200, qPrintable(QString::number(darker)));
    }
};

QTEST_MAIN(EditedValuesTest)
#include "tst_edited_values.moc"
