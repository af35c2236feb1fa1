#include "widgets/reports/engine/items/BarcodeSymbol.h"

#include <zint.h>

#include <algorithm>
#include <memory>

namespace LimeReport {

namespace {

struct TypeName
{
    const char *name;
    int type;
};

constexpr TypeName typeNames[] = {{"CODE128", BARCODE_CODE128},
                                  {"CODE39", BARCODE_CODE39},
                                  {"CODE93", BARCODE_CODE93},
                                  {"CODABAR", BARCODE_CODABAR},
                                  {"INTERLEAVED2OF5", BARCODE_C25INTER},
                                  {"ITF14", BARCODE_ITF14},
                                  {"EAN13", BARCODE_EANX},
                                  {"EAN8", BARCODE_EANX},
                                  {"EANX", BARCODE_EANX},
                                  {"EAN128", BARCODE_GS1_128},
                                  {"GS1128", BARCODE_GS1_128},
                                  {"UPCA", BARCODE_UPCA},
                                  {"UPCE", BARCODE_UPCE},
                                  {"PDF417", BARCODE_PDF417},
                                  {"QR", BARCODE_QRCODE},
                                  {"QRCODE", BARCODE_QRCODE},
                                  {"MICROQR", BARCODE_MICROQR},
                                  {"DATAMATRIX", BARCODE_DATAMATRIX},
                                  {"AZTEC", BARCODE_AZTEC}};

constexpr int mostBytes = 8192; // more fits into no code
constexpr int utf8Eci = 26;

struct SymbolDelete
{
    void operator()(zint_symbol *symbol) const { ZBarcode_Delete(symbol); }
};
using Symbol = std::unique_ptr<zint_symbol, SymbolDelete>;

QString plain(const QString &name)
{
    return name.toUpper().remove(' ').remove('-').remove('_').remove(QStringLiteral("BARCODE"));
}

// The digits that a code of fixed length wants, with or without its check digit; 0: any.
int digitsOf(const QString &name)
{
    if (name == QLatin1String("EAN13"))
        return 13;
    return name == QLatin1String("EAN8") ? 8 : 0;
}

void takeModules(const zint_symbol &encoded, BarcodeSymbol &symbol)
{
    symbol.columns = encoded.width;
    symbol.rows = encoded.rows;
    symbol.dark.resize(encoded.width * encoded.rows);
    for (int row = 0; row < encoded.rows; ++row) {
        symbol.rowHeights.append(double(encoded.row_height[row]));
        for (int column = 0; column < encoded.width; ++column)
            if (encoded.encoded_data[row][column / 8] & (1 << (column % 8)))
                symbol.dark.setBit(row * encoded.width + column);
    }
}

void takeLooks(const zint_symbol &encoded, BarcodeSymbol &symbol)
{
    symbol.isSquare = ZBarcode_Cap(unsigned(encoded.symbology), ZINT_CAP_FIXED_RATIO) != 0;
    symbol.quietColumns = symbol.isSquare ? 4 : 10;
    symbol.quietRows = symbol.isSquare ? 4 : 0;
    if (ZBarcode_Cap(unsigned(encoded.symbology), ZINT_CAP_HRT))
        symbol.text = QString::fromUtf8(reinterpret_cast<const char *>(encoded.text));
}

ItemFault unfit(const QString &error)
{
    return {error, QStringLiteral("значение не подходит для этого штрихкода")};
}

// What can be told before encoding.
ItemFault faultOf(const QString &type, const QString &content)
{
    const int digits = digitsOf(plain(type));
    const int bytes = content.toUtf8().size();
    if (BarcodeSymbol::typeOf(type) == 0)
        return {QStringLiteral("неизвестный вид штрихкода «%1»").arg(type),
                QStringLiteral("неизвестный вид штрихкода")};
    if (bytes == 0)
        return {QStringLiteral("для штрихкода нет данных"),
                QStringLiteral("нет значения для штрихкода")};
    if (bytes > mostBytes)
        return unfit(QStringLiteral("%1 байт для штрихкода слишком много").arg(bytes));
    if (digits > 0 && content.size() != digits && content.size() != digits - 1)
        return unfit(QStringLiteral("в «%1» не %2 цифр, как нужно для %3")
                         .arg(content)
                         .arg(digits)
                         .arg(type));
    return {};
}

bool isLatin(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x100; });
}

} // namespace

int BarcodeSymbol::typeOf(const QString &type)
{
    bool isNumber = false;
    const int number = type.toInt(&isNumber);
    if (isNumber)
        return ZBarcode_ValidID(number) && number != BARCODE_MAXICODE ? number : 0;
    const QString wanted = plain(type);
    for (const TypeName &known : typeNames)
        if (wanted == QLatin1String(known.name))
            return known.type;
    return 0;
}

BarcodeSymbol BarcodeSymbol::encode(const QString &type, const QString &content)
{
    BarcodeSymbol symbol;
    symbol.fault = faultOf(type, content);
    if (!symbol.fault.isEmpty())
        return symbol;
    const QByteArray bytes = content.toUtf8();
    const int number = typeOf(type);
    const Symbol encoded(ZBarcode_Create());
    if (!encoded) {
        symbol.fault = {QStringLiteral("no memory for a bar code"), QStringLiteral("нет памяти")};
        return symbol;
    }
    encoded->symbology = number;
    encoded->input_mode = UNICODE_MODE;
    if (!isLatin(content) && ZBarcode_Cap(unsigned(number), ZINT_CAP_ECI))
        encoded->eci = utf8Eci; // readers would guess the code page otherwise
    const auto *input = reinterpret_cast<const unsigned char *>(bytes.constData());
    if (ZBarcode_Encode(encoded.get(), input, bytes.size()) >= ZINT_ERROR) {
        symbol.fault = unfit(QStringLiteral("«%1» этим штрихкодом не записать: %2")
                                 .arg(content.left(40), QString::fromUtf8(encoded->errtxt)));
        return symbol;
    }
    takeModules(*encoded, symbol);
    takeLooks(*encoded, symbol);
    return symbol;
}

} // namespace LimeReport
