#include "nodes/archive/store/codec/Compression.h"

#include <memory>

#include <zstd.h>

namespace Nodes::Compression {

namespace {

constexpr int level = 1; // the columns leave little that a higher one finds
constexpr unsigned long long mostBytes = 256u << 20;

struct Freer
{
    void operator()(ZSTD_CCtx *context) const { ZSTD_freeCCtx(context); }
    void operator()(ZSTD_DCtx *context) const { ZSTD_freeDCtx(context); }
};

// Made once a thread: making one costs more than a block.
ZSTD_CCtx *packer()
{
    thread_local const std::unique_ptr<ZSTD_CCtx, Freer> context = [] {
        std::unique_ptr<ZSTD_CCtx, Freer> made(ZSTD_createCCtx());
        ZSTD_CCtx_setParameter(made.get(), ZSTD_c_compressionLevel, level);
        ZSTD_CCtx_setParameter(made.get(), ZSTD_c_checksumFlag, 1);
        return made;
    }();
    return context.get();
}

ZSTD_DCtx *unpacker()
{
    thread_local const std::unique_ptr<ZSTD_DCtx, Freer> context(ZSTD_createDCtx());
    return context.get();
}

} // namespace

std::string Pack(std::string_view bytes)
{
    std::string packed(ZSTD_compressBound(bytes.size()), '\0');
    const std::size_t size =
        ZSTD_compress2(packer(), packed.data(), packed.size(), bytes.data(), bytes.size());
    packed.resize(ZSTD_isError(size) ? 0 : size); // which no reader takes for a frame
    return packed;
}

bool Unpack(std::string_view packed, std::string &bytes)
{
    const unsigned long long announced = ZSTD_getFrameContentSize(packed.data(), packed.size());
    if (announced == ZSTD_CONTENTSIZE_UNKNOWN || announced == ZSTD_CONTENTSIZE_ERROR ||
        announced > mostBytes)
        return false;
    bytes.resize(announced);
    const std::size_t size =
        ZSTD_decompressDCtx(unpacker(), bytes.data(), bytes.size(), packed.data(), packed.size());
    return !ZSTD_isError(size) && size == announced;
}

} // namespace Nodes::Compression
