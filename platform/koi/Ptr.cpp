#include <koi/Ptr.h>

namespace Koi {

bool threadSafePtr = false;

}  // namespace Koi
