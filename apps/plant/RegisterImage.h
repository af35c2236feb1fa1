#pragma once

#include "apps/plant/RequestCheck.h"

#include <modbus.h>

#include <memory>
#include <string>

namespace Plant {

struct PlantSite;
struct RegisterEntry;

/// Answers Modbus requests from the register map of a plant. One thread owns it.
class RegisterImage
{
public:
    /// @p site must outlive the image.
    explicit RegisterImage(PlantSite &site);
    ~RegisterImage();
    RegisterImage(const RegisterImage &) = delete;
    RegisterImage &operator=(const RegisterImage &) = delete;

    /// Allocates what answering needs; empty, or what went wrong.
    [[nodiscard]] std::string open();

    /// Copies the present values of the plant into the registers.
    void refresh();

    /// Carries out the complete request @p frame and returns the answer; refused requests are
    /// answered with a Modbus exception and change nothing. Empty if libmodbus gave no answer.
    [[nodiscard]] Frame answer(const Frame &frame);

private:
    bool accept(const WriteSpan &span);
    bool acceptsRow(const RegisterEntry &row, const WriteSpan &span) const;
    double written(const RegisterEntry &row) const;
    Frame exception(const Frame &frame, int code);
    Frame takeReply();

    PlantSite &m_site;
    std::unique_ptr<modbus_t, void (*)(modbus_t *)> m_context{nullptr, &modbus_free};
    std::unique_ptr<modbus_mapping_t, void (*)(modbus_mapping_t *)> m_mapping{nullptr,
                                                                              &modbus_mapping_free};
    // libmodbus composes answers only onto a socket: it writes into one end of this pair and the
    // finished answer is taken from the other, so that no client can block or harm the composing.
    int m_replyWriter = -1;
    int m_replyReader = -1;
};

} // namespace Plant
