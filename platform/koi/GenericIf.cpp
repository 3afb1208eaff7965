#include <koi/GenericIf.h>

namespace Koi {

GenericIf::~GenericIf() = default;

}  // namespace Koi
