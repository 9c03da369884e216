#include "base/files/ContentCopy.h"

#include <algorithm>
#include <cerrno>
#include <linux/fs.h>
#include <optional>
#include <sys/ioctl.h>
#include <sys/types.h>
#include <unistd.h>
#include <vector>

#include "base/files/PendingFile.h"

namespace orlenta::base {
namespace {

using CopyOutcome = Result<void, FileError>;

constexpr qint64 kernelPieceBytes = 8 << 20;
constexpr qint64 pieceBytes = 1 << 20;

/// A running copy.
class ContentCopy final {
public:
    ContentCopy(const RegularFile &source, const PendingFile &target, const CopyControl &control)
        : m_source(source), m_target(target), m_control(control) {}

    CopyOutcome run() {
        if (shareBlocks())
            return {};
        if (auto copied = copyInKernel(); !copied)
            return copied;
        return copyThroughMemory();
    }

private:
    bool shareBlocks() {
        const int target = m_target.descriptor().get();
        // The clone covers the source as it is now, which may be longer than when it was opened.
        if (m_source.size == 0 || ::ioctl(target, FICLONE, m_source.descriptor.get()) != 0 ||
            ::ftruncate(target, m_source.size) != 0)
            return false;
        advance(m_source.size);
        return true;
    }

    // File systems refuse this with various errors, or return 0. copyThroughMemory() handles the rest.
    CopyOutcome copyInKernel() {
        while (m_done < m_source.size) {
            if (m_control.stop.stop_requested())
                return cancelled();
            const auto wanted = static_cast<size_t>(std::min(kernelPieceBytes, m_source.size - m_done));
            const ssize_t copied =
                ::copy_file_range(m_source.descriptor.get(), nullptr, m_target.descriptor().get(), nullptr, wanted, 0);
            if (copied < 0 && errno == EINTR)
                continue;
            if (copied <= 0)
                break;
            advance(copied);
        }
        return {};
    }

    CopyOutcome copyThroughMemory() {
        std::vector<char> piece(static_cast<size_t>(std::min(pieceBytes, m_source.size - m_done)));
        while (m_done < m_source.size) {
            if (m_control.stop.stop_requested())
                return cancelled();
            const auto wanted = std::min(piece.size(), static_cast<size_t>(m_source.size - m_done));
            const ssize_t got = ::read(m_source.descriptor.get(), piece.data(), wanted);
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                return fail(FileError::fromErrno(m_source.path, errno));
            if (got == 0)
                return fail(FileError::withReason(m_source.path,
                                                  QStringLiteral("The file was truncated while it was being copied.")));
            if (const int code = m_target.descriptor().write(std::span(piece).first(static_cast<size_t>(got))))
                return fail(FileError::fromErrno(m_target.path(), code));
            advance(got);
        }
        return {};
    }

    [[nodiscard]] Failure<FileError> cancelled() const {
        return fail(FileError::fromErrno(m_target.path(), ECANCELED));
    }

    void advance(qint64 bytes) {
        m_done += bytes;
        if (m_control.progress)
            m_control.progress(m_done, m_source.size);
    }

    const RegularFile &m_source;
    const PendingFile &m_target;
    const CopyControl &m_control;
    qint64 m_done = 0;
};

} // namespace

Result<void, FileError> copyContent(const RegularFile &source, const PendingFile &target, const CopyControl &control) {
    return ContentCopy(source, target, control).run();
}

} // namespace orlenta::base
