#include "JsonForm.h"

#include <algorithm>
#include <array>

#include <koi/Value.h>

#include "ValueFromJson.h"

namespace Koi {
namespace {

bool isNumber( KoiType const * type ) {
  static constexpr std::array numbers{ &koiTypeU8, &koiTypeU16, &koiTypeU32, &koiTypeU64,
                                       &koiTypeI32 };
  return std::ranges::find( numbers, type ) != numbers.end();
}
bool isString( KoiType const * type ) { return type == &koiTypeString8 || type == &koiTypeName; }

}  // namespace

JsonForm jsonFormOf( KoiType const * type ) {
  if( type == &koiTypeBool )
    return JsonForm::boolean;
  if( type == &koiTypeSeconds )
    return JsonForm::seconds;
  if( isNumber( type ) )
    return JsonForm::wholeNumber;
  if( type->kind == KoiType::enumeration )
    return JsonForm::enumerator;
  if( type->kind == KoiType::structure )
    return JsonForm::object;
  // What is written by hand shows by its text what it is like.
  String8 const zero = zeroOf( type )->strRep();
  if( isString( type ) || zero.view().starts_with( '\'' ) )
    return JsonForm::string;
  bool const isPlain =
      type->kind == KoiType::single && isNumber( type->fields[0].type ) && zero == "0";
  return isPlain ? JsonForm::wholeNumber : JsonForm::text;
}

}  // namespace Koi
