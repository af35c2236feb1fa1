#include "support/RuntimeProject.h"

#include "widgets/elements/ValueWriter.h"

#include "nodes/visual/BasicWidget.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

namespace {

class AnsweringWidget : public Nodes::BasicWidget
{
public:
    explicit AnsweringWidget(Nodes::Result result) : m_result(std::move(result)) {}
    Nodes::Result WriteValue(const Nodes::SignalValue &) override { return m_result; }

private:
    Nodes::Result m_result;
};

/// Notes the message box that comes up and closes it.
struct BoxReader : QObject
{
    BoxReader()
    {
        QObject::connect(&timer, &QTimer::timeout, this, &BoxReader::read);
        timer.start(5);
    }
    void read()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        texts << box->windowTitle() << box->text() << box->button(QMessageBox::Ok)->text();
        box->accept();
    }
    QTimer timer;
    QStringList texts;
};

} // namespace

class ValueWriterTest : public QObject
{
    Q_OBJECT

private slots:
    void refusals_data();
    void refusals();
    void runsActionsAfterSuccess_data();
    void runsActionsAfterSuccess();
};

void ValueWriterTest::refusals_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("message");
    QTest::newRow("no rights") << int(Nodes::Result::AccessDenied) << "Недостаточно прав";
    QTest::newRow("silent") << int(Nodes::Result::Refused) << "";
    QTest::newRow("device") << int(Nodes::Result::DeviceError)
                            << QString::fromStdString(
                                   Nodes::Result(Nodes::Result::DeviceError).ToString());
}

void ValueWriterTest::refusals()
{
    QFETCH(int, type);
    QFETCH(QString, message);
    AnsweringWidget node{Nodes::Result(Nodes::Result::ResultType(type))};
    QSpinBox element;
    element.setValue(5);
    QSignalSpy spy(&element, qOverload<int>(&QSpinBox::valueChanged));
    BoxReader reader;
    QVERIFY(!Widgets::ValueWriter::write(element, node, 5, [&element] { element.setValue(3); }));
    QCOMPARE(element.value(), 3);
    QCOMPARE(spy.count(), 0); // restored with signals blocked
    QCOMPARE(reader.texts,
             message.isEmpty() ? QStringList() : (QStringList{"Внимание", message, "ОK"}));
}

void ValueWriterTest::runsActionsAfterSuccess_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("written");
    QTest::newRow("runtime") << int(Nodes::WorkModeRuntime) << QStringList{"target", "after"};
    QTest::newRow("editing") << int(Nodes::WorkModeEditing) << QStringList{"target"};
}

void ValueWriterTest::runsActionsAfterSuccess()
{
    QFETCH(int, mode);
    QFETCH(QStringList, written);
    RuntimeProject project(R"(<folder id="10" name="F">
        <memorySignal id="11" name="target" writable="true"/>
        <memorySignal id="12" name="after" writable="true"/>
        <actionWriteValue id="13" name="A" signal="12" value="1"/></folder>
        <window id="20" name="W"><label id="21" name="L" signal="11" afterWrite="13"/></window>)",
                           Nodes::enWorkMode(mode));
    project.record({11, 12});
    QObject element;
    bool isRestored = false;
    QVERIFY(Widgets::ValueWriter::write(element, *project.node<Nodes::BasicWidget>(21), 1.5,
                                        [&isRestored] { isRestored = true; }));
    QTRY_COMPARE(project.recorded, written);
    QTest::qWait(60); // longer than the action pacing
    QCOMPARE(project.recorded, written);
    QVERIFY(!isRestored);
    QCOMPARE(project.value(11).ToDouble(), 1.5);
}

QTEST_MAIN(ValueWriterTest)
#include "tst_value_writer.moc"
