#include "widgets/reports/export/XlsxBook.h"

#include "widgets/reports/export/DataExportProgress.h"
#include "widgets/reports/export/ExportColumns.h"
#include "widgets/reports/export/ExportFiles.h"
#include "widgets/reports/export/XlsxCheck.h"
#include "widgets/reports/export/XlsxSheetNames.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <xlsxwriter.h>

#include <algorithm>
#include <cmath>

namespace Widgets::XlsxBook {

namespace {

constexpr int longestText = 32767; // of a cell
constexpr int widthRows = 200;     // looked at for the widths of columns
constexpr double exactInteger = 9007199254740992.0;

struct Formats
{
    lxw_format *header;
    lxw_format *time;
};

class Writer
{
public:
    Writer(lxw_workbook *book, DataExportProgress &progress) : m_book(book), m_progress(progress)
    {
        m_formats.header = workbook_add_format(book);
        format_set_bold(m_formats.header);
        format_set_bg_color(m_formats.header, 0xd9d9d9);
        format_set_bottom(m_formats.header, LXW_BORDER_THIN);
        m_formats.time = workbook_add_format(book);
        format_set_num_format(m_formats.time, "dd.mm.yyyy hh:mm:ss");
    }

    /// False: ended, error() tells why.
    bool write(const ExportSheet &sheet, int rowsPerSheet)
    {
        const ExportColumns columns(*sheet.rows);
        const int count = sheet.rows->rowCount();
        int begin = 0;
        do {
            const int end = int(std::min<qint64>(count, qint64(begin) + rowsPerSheet));
            if (!writePart(sheet.name, columns, begin, end))
                return false;
            begin = end;
        } while (begin < count);
        return true;
    }

    const QString &error() const { return m_error; }
    qint64 rows() const { return m_rows; }

private:
    bool writePart(const QString &name, const ExportColumns &columns, int begin, int end)
    {
        lxw_worksheet *sheet =
            workbook_add_worksheet(m_book, m_names.next(name).toUtf8().constData());
        if (!sheet)
            return fail(QStringLiteral("не создан лист «%1»").arg(name));
        setUp(sheet, columns, begin, end);
        for (int column = 0; column < columns.count(); ++column)
            worksheet_write_string(sheet, 0, lxw_col_t(column),
                                   columns.header(column).toUtf8().constData(), m_formats.header);
        ++m_rows;
        for (int row = begin; row < end; ++row) {
            bool isEmpty = true;
            for (int column = 0; column < columns.count(); ++column) {
                const QVariant value = columns.cell(row, column);
                const lxw_error result =
                    writeCell(sheet, lxw_row_t(row - begin + 1), lxw_col_t(column), value);
                if (result != LXW_NO_ERROR)
                    return fail(QString::fromLatin1(lxw_strerror(result)));
                isEmpty = isEmpty && (!value.isValid() || value.toString().isEmpty());
            }
            m_rows += !isEmpty; // rows without a cell are not written
            if (!m_progress.rowDone())
                return fail(ExportFiles::cancelled);
        }
        return true;
    }

    void setUp(lxw_worksheet *sheet, const ExportColumns &columns, int begin, int end) const
    {
        worksheet_freeze_panes(sheet, 1, 0);
        worksheet_repeat_rows(sheet, 0, 0);
        if (columns.count() > 0)
            worksheet_autofilter(sheet, 0, 0, lxw_row_t(end - begin),
                                 lxw_col_t(columns.count() - 1));
        for (int column = 0; column < columns.count(); ++column) {
            int width = columns.header(column).size() + 3; // with the filter's arrow
            for (int row = begin; row < std::min(end, begin + widthRows); ++row)
                width = std::max(width, widthOf(columns.cell(row, column)));
            worksheet_set_column(sheet, lxw_col_t(column), lxw_col_t(column),
                                 std::clamp(width, 8, 60), nullptr);
        }
    }

    static int widthOf(const QVariant &value)
    {
        const int type = int(value.type());
        if (type == QMetaType::QDateTime)
            return 20;
        return (type == QMetaType::Double ? QString::number(value.toDouble(), 'g', 10).size()
                                          : value.toString().size()) +
               2;
    }

    lxw_error writeCell(lxw_worksheet *sheet, lxw_row_t row, lxw_col_t column,
                        const QVariant &value) const
    {
        const int type = int(value.type());
        if (type == QMetaType::UnknownType)
            return LXW_NO_ERROR;
        if (type == QMetaType::Bool)
            return worksheet_write_boolean(sheet, row, column, value.toBool(), nullptr);
        if (type == QMetaType::QDateTime || type == QMetaType::QDate)
            return writeTime(sheet, row, column, value.toDateTime().toLocalTime());
        bool isNumber = type != QMetaType::QString;
        const double number = isNumber ? value.toDouble(&isNumber) : 0;
        const bool isReal = type == QMetaType::Double || type == QMetaType::Float;
        if (isNumber && (isReal || std::abs(number) < exactInteger))
            return worksheet_write_number(sheet, row, column, number, nullptr);
        return writeText(sheet, row, column, value.toString());
    }

    static lxw_error writeText(lxw_worksheet *sheet, lxw_row_t row, lxw_col_t column, QString text)
    {
        static const QString cut = QStringLiteral("... (обрезано)");
        if (text.size() > longestText)
            text = text.left(longestText - cut.size()) + cut;
        return text.isEmpty()
                   ? LXW_NO_ERROR
                   : worksheet_write_string(sheet, row, column, text.toUtf8().constData(), nullptr);
    }

    lxw_error writeTime(lxw_worksheet *sheet, lxw_row_t row, lxw_col_t column,
                        const QDateTime &time) const
    {
        if (!time.isValid())
            return LXW_NO_ERROR;
        if (time.date().year() < 1900 || time.date().year() > 9999) // a spreadsheet has none
            return writeText(sheet, row, column, time.toString(Qt::ISODateWithMs));
        lxw_datetime told{};
        told.year = time.date().year();
        told.month = time.date().month();
        told.day = time.date().day();
        told.hour = time.time().hour();
        told.min = time.time().minute();
        told.sec = time.time().second() + time.time().msec() / 1000.0;
        return worksheet_write_datetime(sheet, row, column, &told, m_formats.time);
    }

    bool fail(const QString &error)
    {
        m_error = error;
        return false;
    }

    lxw_workbook *m_book;
    DataExportProgress &m_progress;
    Formats m_formats{};
    XlsxSheetNames m_names;
    QString m_error;
    qint64 m_rows = 0;
};

// Returns why not; `rows` is how many there are.
QString writeBook(const QByteArray &path, const ExportSheets &sheets, DataExportProgress &progress,
                  int rowsPerSheet, qint64 *rows)
{
    QByteArray directory = QFile::encodeName(QFileInfo(QFile::decodeName(path)).absolutePath());
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = directory.data();
    lxw_workbook *book = workbook_new_opt(path.constData(), &options);
    if (!book)
        return QStringLiteral("нет памяти");
    Writer writer(book, progress);
    const bool isWritten = std::all_of(sheets.begin(), sheets.end(), [&](const ExportSheet &sheet) {
        return writer.write(sheet, rowsPerSheet);
    });
    *rows = writer.rows();
    const lxw_error closed = workbook_close(book); // also frees the book of a cancelled export
    if (!isWritten)
        return writer.error();
    return closed == LXW_NO_ERROR ? QString() : QString::fromLatin1(lxw_strerror(closed));
}

} // namespace

QString write(const QString &file, const ExportSheets &sheets, DataExportProgress &progress,
              int rowsPerSheet)
{
    if (!ExportFiles::refusal(file).isEmpty())
        return ExportFiles::refusal(file);
    const QString written = file + QStringLiteral(".part");
    qint64 rows = 0;
    QString fault = writeBook(QFile::encodeName(written), sheets, progress, rowsPerSheet, &rows);
    if (fault.isEmpty())
        fault = xlsxFault(written, rows);
    if (fault.isEmpty())
        fault = ExportFiles::replace(written, file);
    if (fault.isEmpty())
        return QString();
    QFile::remove(written);
    return fault == ExportFiles::cancelled ? fault : ExportFiles::notWritten(file, fault);
}

} // namespace Widgets::XlsxBook
