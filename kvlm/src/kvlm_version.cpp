// The version record.
#include "frame/base.h"

namespace {

constexpr KvlLibraryVersion version = {5, 2, 108, 345, {'w', '7', 0, 0}, "libkvlmw7.so.5.2", "5.2", "Jul 11 2007"};

} // namespace

extern "C" const KvlLibraryVersion *kvlmGetLibVersion(void)
{
    return &version;
}
