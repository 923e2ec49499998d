#include "platform/linux/RandomIdentifiers.h"

#include <cerrno>
#include <cstdlib>
#include <sys/random.h>

namespace nettlecap {

Uuid RandomIdentifiers::next() {
    Uuid id;
    // Up to 256 bytes come whole, and only a kernel older than 3.17 has none.
    while (getrandom(&id, sizeof id, 0) != static_cast<ssize_t>(sizeof id))
        if (errno != EINTR) std::abort();
    id.high = (id.high & 0xFFFF'FFFF'FFFF'0FFFU) | 0x4000U;               // version 4
    id.low = (id.low & 0x3FFF'FFFF'FFFF'FFFFU) | 0x8000'0000'0000'0000U;  // RFC 4122
    return id;
}

}  // namespace nettlecap
