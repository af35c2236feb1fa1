#pragma once

#include <csignal>

#include <sys/resource.h>

/// Lets writes fail beyond a size, as a full disk does; restores on destruction.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit tight{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};
