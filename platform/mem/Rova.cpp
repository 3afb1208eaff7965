#include <mem/Rova.h>

namespace Rova {

CorruptionDetectedException::~CorruptionDetectedException() = default;
InvalidInitializeException::~InvalidInitializeException() = default;
MemoryResourceException::~MemoryResourceException() = default;

}  // namespace Rova
