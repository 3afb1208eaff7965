#include <quill/QuillType.h>

#include <array>

namespace Quill {

std::string quillTypeName( QuillType type ) {
  static constexpr std::array names{ "writer", "shadow", "reader", "keyshadow" };
  auto const number = static_cast< U32 >( type );
  return number < names.size() ? names[number] : "QuillType(" + std::to_string( number ) + ")";
}

}  // namespace Quill
