#include "apps/plant/RegisterImage.h"

#include "apps/plant/RegisterMap.h"

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <unistd.h>

namespace Plant {

namespace {
constexpr int exceptionFlag = 0x80;

bool overlaps(const RegisterEntry &row, const WriteSpan &span)
{
    return row.address < span.address + span.count && span.address < row.address + row.width();
}

bool covers(const WriteSpan &span, const RegisterEntry &row)
{
    return span.address <= row.address && row.address + row.width() <= span.address + span.count;
}
} // namespace

RegisterImage::RegisterImage(PlantSite &site) : m_site(site) {}

RegisterImage::~RegisterImage()
{
    if (m_replyWriter >= 0)
        ::close(m_replyWriter);
    if (m_replyReader >= 0)
        ::close(m_replyReader);
}

std::string RegisterImage::open()
{
    m_context.reset(modbus_new_tcp("127.0.0.1", 0));
    m_mapping.reset(
        modbus_mapping_new(tableSize(RegisterTable::Coil), tableSize(RegisterTable::DiscreteInput),
                           tableSize(RegisterTable::Holding), tableSize(RegisterTable::Input)));
    int ends[2] = {-1, -1};
    if (!m_context || !m_mapping ||
        ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends) != 0)
        return std::string("cannot set up the register image: ") + std::strerror(errno);
    m_replyWriter = ends[0];
    m_replyReader = ends[1];
    modbus_set_socket(m_context.get(), m_replyWriter);
    // libmodbus waits this long before it answers some exceptions, which here serves nothing.
    modbus_set_response_timeout(m_context.get(), 0, 1);
    refresh();
    return {};
}

void RegisterImage::refresh()
{
    for (const RegisterEntry &row : registerMap()) {
        const double value = row.read(m_site);
        switch (row.table) {
        case RegisterTable::Coil:
            m_mapping->tab_bits[row.address] = value != 0.0;
            break;
        case RegisterTable::DiscreteInput:
            m_mapping->tab_input_bits[row.address] = value != 0.0;
            break;
        case RegisterTable::Holding:
            encode(row, value, m_mapping->tab_registers + row.address);
            break;
        case RegisterTable::Input:
            encode(row, value, m_mapping->tab_input_registers + row.address);
            break;
        }
    }
}

Frame RegisterImage::answer(const Frame &frame)
{
    const int code = malformation(frame);
    if (code != 0)
        return exception(frame, code);
    if (modbus_reply(m_context.get(), frame.data(), static_cast<int>(frame.size()),
                     m_mapping.get()) < 0) {
        takeReply();
        return exception(frame, MODBUS_EXCEPTION_SLAVE_OR_SERVER_FAILURE);
    }
    Frame reply = takeReply();
    const WriteSpan span = writeSpan(frame);
    const bool refused = reply.size() < leastFrame || (reply[leastFrame - 1] & exceptionFlag) != 0;
    if (span.count == 0 || refused)
        return reply;
    const bool accepted = accept(span);
    refresh();
    return accepted ? reply : exception(frame, MODBUS_EXCEPTION_ILLEGAL_DATA_VALUE);
}

bool RegisterImage::accept(const WriteSpan &span)
{
    const RegisterTable table = span.coils ? RegisterTable::Coil : RegisterTable::Holding;
    const auto touched = [&](const RegisterEntry &row) {
        return row.table == table && overlaps(row, span);
    };
    for (const RegisterEntry &row : registerMap()) {
        if (touched(row) && !acceptsRow(row, span))
            return false;
    }
    for (const RegisterEntry &row : registerMap()) {
        if (touched(row))
            row.write(m_site, written(row));
    }
    return true;
}

bool RegisterImage::acceptsRow(const RegisterEntry &row, const WriteSpan &span) const
{
    constexpr double rounding = 1e-6;
    const double value = written(row);
    // Written this way round, a NaN is refused too.
    return covers(span, row) && value >= row.low - rounding && value <= row.high + rounding;
}

double RegisterImage::written(const RegisterEntry &row) const
{
    if (row.table == RegisterTable::Coil)
        return m_mapping->tab_bits[row.address] ? 1.0 : 0.0;
    return decode(row, m_mapping->tab_registers + row.address);
}

Frame RegisterImage::exception(const Frame &frame, int code)
{
    if (modbus_reply_exception(m_context.get(), frame.data(), static_cast<unsigned>(code)) < 0)
        return {};
    return takeReply();
}

Frame RegisterImage::takeReply()
{
    Frame reply(longestFrame);
    const ssize_t count = ::recv(m_replyReader, reply.data(), reply.size(), MSG_DONTWAIT);
    reply.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return reply;
}

} // namespace Plant
