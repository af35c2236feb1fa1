// Any bytes as a packet of samples: no crash, and what was read can be packed and read again.
#include "nodes/archive/store/SamplePacket.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const auto packet = Nodes::SamplePacket::Unpack(bytes);
    if (!packet)
        return 0;
    const auto again = Nodes::SamplePacket::Unpack(packet->Pack());
    if (!again || again->parts.size() != packet->parts.size() || again->Size() != packet->Size())
        std::abort();
    for (std::size_t i = 0; i < packet->parts.size(); ++i) {
        if (!(again->parts[i].run == packet->parts[i].run))
            std::abort();
    }
    return 0;
}
