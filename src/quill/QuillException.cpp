#include <quill/QuillException.h>

namespace Quill {

TableFullException::~TableFullException() = default;
DirectWriteException::~DirectWriteException() = default;
ReaderStarvedException::~ReaderStarvedException() = default;

}  // namespace Quill
