#include "localvoices/workers/Confinement.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <span>
#include <vector>

#include <cerrno>
#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

#if defined(__x86_64__)
constexpr std::uint32_t ownArchitecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t ownArchitecture = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t ownArchitecture = 0;
#endif

// The sanitizers reserve terabytes of address space.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isAddressSpaceLimited = false;
#else
constexpr bool isAddressSpaceLimited = true;
#endif

constexpr rlim_t mostMemory = rlim_t{4} << 30;
constexpr rlim_t mostProcessorSeconds = 170;
constexpr rlim_t mostOpenFiles = 64;
/// Enough for a recording in a memory file.
constexpr rlim_t largestFile = rlim_t{64} << 20;

/// The calls for reading, memory, threads and clocks.
constexpr std::array allowedCalls = std::to_array<std::uint32_t>({
    __NR_read, __NR_readv, __NR_pread64, __NR_write, __NR_writev, __NR_lseek, __NR_close, __NR_fstat, __NR_newfstatat,
        __NR_statx, __NR_faccessat, __NR_faccessat2, __NR_readlinkat, __NR_getcwd, __NR_getdents64, __NR_pipe2,
        __NR_fcntl, __NR_memfd_create, __NR_ftruncate, __NR_mmap, __NR_munmap, __NR_mremap, __NR_mprotect, __NR_madvise,
        __NR_brk, __NR_futex, __NR_set_robust_list, __NR_rseq, __NR_membarrier, __NR_sched_yield,
        __NR_sched_getaffinity, __NR_clock_gettime, __NR_clock_getres, __NR_clock_nanosleep, __NR_nanosleep,
        __NR_gettimeofday, __NR_ppoll, __NR_pselect6, __NR_getrandom, __NR_getpid, __NR_gettid, __NR_getuid,
        __NR_geteuid, __NR_getgid, __NR_getegid, __NR_uname, __NR_sysinfo, __NR_getrusage, __NR_rt_sigaction,
        __NR_rt_sigprocmask, __NR_rt_sigreturn, __NR_sigaltstack, __NR_restart_syscall, __NR_exit, __NR_exit_group,
// Newer architectures never had these.
#if defined(__x86_64__)
        __NR_stat, __NR_lstat, __NR_access, __NR_readlink, __NR_time, __NR_poll, __NR_select,
#endif
});

void limit(__rlimit_resource resource, rlim_t most) {
    rlimit current{};
    ::getrlimit(resource, &current);
    const rlim_t lowered = std::min(most, current.rlim_max);
    const rlimit limits{lowered, lowered};
    ::setrlimit(resource, &limits);
}

/// 0 if the kernel has no Landlock.
int landlockVersion() {
    const long version = ::syscall(__NR_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    return static_cast<int>(std::max(version, 0L));
}

/// All file rights of a Landlock version, which are its lowest bits.
std::uint64_t landlockRights(int version) {
    constexpr std::array<int, 5> counts{13, 14, 15, 15, 16};
    const auto index = std::min(static_cast<std::size_t>(version), counts.size()) - 1;
    return (std::uint64_t{1} << counts.at(index)) - 1;
}

bool confineFiles(const QByteArray &readableFolder) {
    const int version = landlockVersion();
    if (version == 0)
        return false;
    landlock_ruleset_attr handled{};
    handled.handled_access_fs = landlockRights(version);
    const auto rules =
        static_cast<int>(::syscall(__NR_landlock_create_ruleset, &handled, sizeof handled.handled_access_fs, 0));
    if (rules < 0)
        return false;
    landlock_path_beneath_attr reading{};
    reading.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
    reading.parent_fd = ::open(readableFolder.constData(), O_PATH | O_CLOEXEC);
    // A missing folder needs no rule.
    if (reading.parent_fd >= 0) {
        ::syscall(__NR_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &reading, 0);
        ::close(reading.parent_fd);
    }
    const bool isConfined = ::syscall(__NR_landlock_restrict_self, rules, 0) == 0;
    ::close(rules);
    return isConfined;
}

/// Builds the seccomp filter. Calls that it doesn't allow fail with ENOSYS, because the C library has fallbacks for
/// calls that the kernel doesn't know.
class CallFilter final {
public:
    CallFilter() {
        load(offsetof(seccomp_data, arch));
        add(BPF_JMP | BPF_JEQ | BPF_K, ownArchitecture, 1, 0);
        refuse();
        load(offsetof(seccomp_data, nr));
    }

    void allow(std::uint32_t call) {
        add(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1);
        allowNow();
    }

    /// Allows a call if the argument with this index equals the number, has one of the bits, or has none of the bits.
    void allowNumber(std::uint32_t call, int argument, std::uint32_t number) {
        allowIf(call, argument, {BPF_JEQ, number, 0, 1});
    }
    void allowBits(std::uint32_t call, int argument, std::uint32_t bits) {
        allowIf(call, argument, {BPF_JSET, bits, 0, 1});
    }
    void allowWithoutBits(std::uint32_t call, int argument, std::uint32_t bits) {
        allowIf(call, argument, {BPF_JSET, bits, 1, 0});
    }

    [[nodiscard]] bool install() {
        refuse();
        const sock_fprog program{static_cast<unsigned short>(m_instructions.size()), m_instructions.data()};
        return ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
    }

private:
    void add(int code, std::uint32_t operand, std::uint8_t ifTrue = 0, std::uint8_t ifFalse = 0) {
        m_instructions.push_back({static_cast<std::uint16_t>(code), ifTrue, ifFalse, operand});
    }
    void load(std::size_t offset) { add(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset)); }
    void allowNow() { add(BPF_RET | BPF_K, SECCOMP_RET_ALLOW); }
    void refuse() { add(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS); }

    struct Comparison {
        int code;
        std::uint32_t operand;
        std::uint8_t ifTrue;
        std::uint8_t ifFalse;
    };
    void allowIf(std::uint32_t call, int argument, const Comparison &comparison) {
        add(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 4);
        // Load the lower half of the argument; both architectures are little-endian.
        load(offsetof(seccomp_data, args) + static_cast<std::size_t>(argument) * sizeof(std::uint64_t));
        add(BPF_JMP | comparison.code | BPF_K, comparison.operand, comparison.ifTrue, comparison.ifFalse);
        allowNow();
        refuse();
    }

    std::vector<sock_filter> m_instructions;
};

bool confineCalls() {
    if (ownArchitecture == 0)
        return false;
    CallFilter filter;
    for (const std::uint32_t call : allowedCalls)
        filter.allow(call);
    filter.allowWithoutBits(__NR_openat, 2, O_ACCMODE | O_CREAT | O_TRUNC);
    // espeak-ng starts a thread. A filter can't inspect clone3's flags; without clone3 the C library uses clone.
    filter.allowBits(__NR_clone, 0, CLONE_THREAD);
    // Only for this process itself: abort() sends it a signal.
    filter.allowNumber(__NR_tgkill, 0, static_cast<std::uint32_t>(::getpid()));
    filter.allowNumber(__NR_prlimit64, 0, 0);
    return filter.install();
}

} // namespace

Confinement confineProcess(const QByteArray &readableFolder) {
    ::close_range(STDERR_FILENO + 1, UINT_MAX, 0);
    limit(RLIMIT_CPU, mostProcessorSeconds);
    limit(RLIMIT_FSIZE, largestFile);
    limit(RLIMIT_NOFILE, mostOpenFiles);
    if (isAddressSpaceLimited)
        limit(RLIMIT_AS, mostMemory);
    // Landlock and seccomp require this.
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return {};
    Confinement confinement;
    confinement.files = confineFiles(readableFolder);
    confinement.calls = confineCalls();
    return confinement;
}

QStringList confinementGaps() {
    QStringList gaps;
    if (landlockVersion() == 0)
        gaps << u"The kernel has no Landlock, so worker processes can read files."_s;
    if (ownArchitecture == 0 || ::prctl(PR_GET_SECCOMP) < 0)
        gaps << u"The kernel has no seccomp, so worker processes can use the network."_s;
    return gaps;
}

} // namespace orlenta::localvoices
