#include "support/Rows.h"

#include "utils/settings/QtTexts.h"

#include <QGuiApplication>
#include <QtTest>

class QtTextsTest : public QObject
{
    Q_OBJECT

private slots:
    void whatQtSaysIsRussian_data()
    {
        const Rows<QByteArray, QByteArray> row("context", "text");
        row("button", "QPlatformTheme", "Cancel");
        row("menu of a field", "QLineEdit", "&Copy");
        row("file dialog", "QFileDialog", "Look in:");
        row("colour dialog", "QColorDialog", "&Basic colors");
        row("details", "QMessageBox", "Show Details...");
    }
    void whatQtSaysIsRussian()
    {
        QFETCH(QByteArray, context);
        QFETCH(QByteArray, text);
        static const bool isInstalled = Utils::QtTexts::install(*QCoreApplication::instance());
        QVERIFY(isInstalled);
        const QString said = QCoreApplication::translate(context, text);
        QVERIFY2(said.contains(QRegularExpression(QStringLiteral("[а-я]"))), qPrintable(said));
    }
};

QTEST_GUILESS_MAIN(QtTextsTest)
#include "tst_qt_texts.moc"
