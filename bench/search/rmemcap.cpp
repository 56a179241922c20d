// Preloaded into bench_search to give its sockets the receive buffer a machine with a lower
// net.core.rmem_max would grant. That limit is one for the whole machine (a network namespace
// cannot lower it), and lowering it would change every other program on the machine, so the
// bench caps what its own process asks for instead: the kernel then grants twice the capped
// value, exactly as it grants twice rmem_max to a larger request.
//   LD_PRELOAD=librmemcap.so KOVA_RMEM_MAX=212992 bench_search burst 1024
#include <cstdlib>
#include <dlfcn.h>
#include <sys/socket.h>

extern "C" int setsockopt(int fd, int level, int name, const void *value, socklen_t length)
{
    using Real = int (*)(int, int, int, const void *, socklen_t);
    static const Real real = reinterpret_cast<Real>(dlsym(RTLD_NEXT, "setsockopt"));
    static const char *const cap = std::getenv("KOVA_RMEM_MAX");
    if (cap && level == SOL_SOCKET && name == SO_RCVBUF && length == sizeof(int)) {
        int asked = *static_cast<const int *>(value);
        const int limit = std::atoi(cap);
        if (asked > limit)
            asked = limit;
        return real(fd, level, name, &asked, length);
    }
    return real(fd, level, name, value, length);
}
