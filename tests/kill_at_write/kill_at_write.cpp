#include "kill_at_write/kill_at_write.h"

#include <dlfcn.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

std::atomic<long> calls = 0;

long KillAt() {
    static const char* text = std::getenv(norvelis::kKillAtVariable);
    return text == nullptr ? 0 : std::strtol(text, nullptr, 10);
}

template <typename Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// Makes the call, or the first half of it by `half` and then dies.
template <typename Whole, typename Half>
auto Counted(Whole whole, Half half) {
    if (++calls == KillAt()) {
        half();
        raise(SIGKILL);
    }
    return whole();
}

template <typename Whole>
auto Counted(Whole whole) {
    return Counted(whole, [] {});
}

struct CountReport {
    ~CountReport() {
        const char* path = std::getenv(norvelis::kCountFileVariable);
        std::FILE* file = path == nullptr ? nullptr : std::fopen(path, "w");
        if (file == nullptr) return;
        std::fprintf(file, "%ld", calls.load());
        std::fclose(file);
    }
} countReport;

}  // namespace

extern "C" {

ssize_t write(int file, const void* bytes, size_t count) {
    static auto* real = Real<ssize_t(int, const void*, size_t)>("write");
    return Counted([=] { return real(file, bytes, count); }, [=] { real(file, bytes, count / 2); });
}

ssize_t writev(int file, const struct iovec* parts, int count) {
    static auto* real = Real<ssize_t(int, const struct iovec*, int)>("writev");
    return Counted([=] { return real(file, parts, count); }, [=] { real(file, parts, count / 2); });
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
    static auto* real = Real<ssize_t(int, const void*, size_t, off_t)>("pwrite");
    return Counted([=] { return real(file, bytes, count, offset); },
                   [=] { real(file, bytes, count / 2, offset); });
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t offset) {
    static auto* real = Real<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
    return Counted([=] { return real(file, bytes, count, offset); },
                   [=] { real(file, bytes, count / 2, offset); });
}

int fsync(int file) {
    static auto* real = Real<int(int)>("fsync");
    return Counted([=] { return real(file); });
}

int fdatasync(int file) {
    static auto* real = Real<int(int)>("fdatasync");
    return Counted([=] { return real(file); });
}

int ftruncate(int file, off_t size) noexcept {
    static auto* real = Real<int(int, off_t)>("ftruncate");
    return Counted([=] { return real(file, size); });
}

int ftruncate64(int file, off64_t size) noexcept {
    static auto* real = Real<int(int, off64_t)>("ftruncate64");
    return Counted([=] { return real(file, size); });
}

int rename(const char* from, const char* to) noexcept {
    static auto* real = Real<int(const char*, const char*)>("rename");
    return Counted([=] { return real(from, to); });
}

int unlink(const char* path) noexcept {
    static auto* real = Real<int(const char*)>("unlink");
    return Counted([=] { return real(path); });
}
}
