#pragma once

#include <csignal>
#include <sys/resource.h>

namespace orlenta::testing {

/// For its lifetime, no file of this process can grow beyond `bytes`. To the writer this looks like a full disk, even
/// as root.
class FileSizeLimit final {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit{bytes, m_former.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_signal);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    void (*m_signal)(int);
    rlimit m_former{};
};

} // namespace orlenta::testing
