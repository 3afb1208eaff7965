#include <koijson/ValueToJson.h>

#include <cmath>

#include <koi/FieldOf.h>
#include <koi/Text.h>
#include <koi/Value.h>

#include "JsonForm.h"
#include "JsonPlace.h"

namespace Koi {

std::string jsonQuoted( std::string_view text ) {
  return Json( text ).dump( -1, ' ', false, Json::error_handler_t::replace );
}

ValueToJson::ValueToJson( KoiType const * type ) : type_( type ), form_( jsonFormOf( type ) ) {
  if( form_ == JsonForm::object )
    for( KoiAttribute const & field : type_->fields ) {
      names_.push_back( ( names_.empty() ? "{" : ", " ) + jsonQuoted( field.name ) + ": " );
      fields_.emplace_back( field.type );
    }
}

void ValueToJson::append( std::string & out, GenericIf const & value ) const {
  if( form_ == JsonForm::object ) {
    for( std::size_t i = 0; i < fields_.size(); ++i ) {
      out += names_[i];
      fields_[i].append( out, *fieldOf( value, i ) );
    }
    out += '}';
    return;
  }
  String8 const text = value.strRep();
  switch( form_ ) {
    case JsonForm::boolean:
      out += text == "True" ? "true" : "false";
      break;
    case JsonForm::seconds:
      out += std::isfinite( *valueIn< Seconds >( value ) ) ? text.view() : "null";
      break;
    case JsonForm::wholeNumber:
      out += text.view();
      break;
    case JsonForm::string: {
      auto it = text.begin();
      out += jsonQuoted( stringFromText( it, text.end() ).view() );
      break;
    }
    default:
      out += jsonQuoted( text.view() );
  }
}

}  // namespace Koi
