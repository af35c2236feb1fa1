#include "support/Rows.h"

#include "widgets/elements/ElementPainting.h"
#include "widgets/elements/LabelText.h"

#include <QPainter>

using Widgets::ElementPainting;
using Widgets::LabelText;

namespace {

template <class Draw> QImage painted(Draw draw)
{
    QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(20, 10);
    painter.setPen(Qt::black);
    draw(painter);
    return image;
}

} // namespace

class LabelTextTest : public QObject
{
    Q_OBJECT

private slots:
    void looksLikeDrawText_data();
    void looksLikeDrawText();
    void followsChanges();
    void textRect_data();
    void textRect();
};

void LabelTextTest::looksLikeDrawText_data()
{
    const Rows<QString, int, double, int> row("text", "flags", "angle", "border");
    const int middle = Qt::AlignRight | Qt::AlignVCenter;
    const int top = Qt::AlignLeft | Qt::AlignTop;
    row("number", "-1234.5", middle, 0, 0);
    row("number with unit", "71.4 °C", middle, 0, 2);
    row("caption", "Давление пара", top, 0, 0);
    row("centred, bottom", "Да", Qt::AlignHCenter | Qt::AlignBottom, 0, 1);
    row("two lines", "Котёл\\n№ 1", Qt::AlignCenter, 0, 0);
    row("too wide", "Температура прямой сетевой воды", middle, 0, 0);
    row("turned by 90", "12.5 МПа", Qt::AlignCenter, 90, 0);
    row("turned by 30", "12.5", Qt::AlignCenter, 30, 0);
    row("wrapped", "один два три четыре", top | Qt::TextWordWrap, 0, 0);
    row("right to left", "12 שלום", middle, 0, 0);
}

void LabelTextTest::looksLikeDrawText()
{
    QFETCH(QString, text);
    QFETCH(int, flags);
    QFETCH(double, angle);
    QFETCH(int, border);
    const QSize box(110, 40);
    const QPoint centre(55, 20);
    const QFont font(QStringLiteral("DejaVu Sans"), 11);
    const QImage expected = painted([&](QPainter &painter) {
        painter.setFont(font);
        ElementPainting::drawRotatedText(painter, box, centre, angle, border, flags, text);
    });
    LabelText label;
    label.setFont(font);
    const auto draw = [&](QPainter &painter) {
        label.draw(painter, {box, centre, angle, border, flags}, text);
    };
    QCOMPARE(painted(draw), expected);
    QCOMPARE(painted(draw), expected); // from the layout kept
    QVERIFY(expected != painted([](QPainter &) {}));
}

void LabelTextTest::followsChanges()
{
    LabelText label;
    const auto look = [&label](int pointSize, int flags, const QString &text) {
        label.setFont(QFont(QStringLiteral("DejaVu Sans"), pointSize));
        return painted([&](QPainter &painter) {
            label.draw(painter, {QSize(110, 40), QPoint(55, 20), 0, 0, flags}, text);
        });
    };
    const QImage first = look(11, Qt::AlignLeft, QStringLiteral("1"));
    QVERIFY(look(11, Qt::AlignLeft, QStringLiteral("2")) != first);
    QVERIFY(look(11, Qt::AlignRight, QStringLiteral("1")) != first);
    QVERIFY(look(14, Qt::AlignLeft, QStringLiteral("1")) != first);
    QCOMPARE(look(11, Qt::AlignLeft, QStringLiteral("1")), first);
}

void LabelTextTest::textRect_data()
{
    const Rows<double, int, QRect> row("angle", "border", "rect");
    row("upright", 0, 0, {-50, -15, 100, 30});
    row("quarter turn swaps the sides", 90, 0, {-15, -50, 30, 100});
    row("shifted by two borders", 0, 3, {-44, -9, 88, 18});
}

void LabelTextTest::textRect()
{
    QFETCH(double, angle);
    QFETCH(int, border);
    QTEST(ElementPainting::rotatedTextRect(QSize(100, 30), angle, border), "rect");
}

QTEST_MAIN(LabelTextTest)
#include "tst_label_text.moc"
