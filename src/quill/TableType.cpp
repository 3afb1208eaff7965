#include <quill/TableType.h>

#include <vector>

namespace Quill {
namespace {

std::vector< TableType const * > & all() {
  static std::vector< TableType const * > types;
  return types;
}

}  // namespace

AnyReader::~AnyReader() = default;
AnyFollower::~AnyFollower() = default;
TableType::~TableType() = default;

TableType::TableType( Koi::KoiType const & valueType ) : valueType_( valueType ) {
  all().push_back( this );
}

TableType const * tableType( std::string_view valueType ) {
  for( auto const * const type : all() )
    if( type->valueType().name == valueType )
      return type;
  return nullptr;
}

}  // namespace Quill
