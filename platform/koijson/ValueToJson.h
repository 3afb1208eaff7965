// ValueToJson.h: values of one type as JSON, in the form in which entities are read from it. One
// thread uses an object.
#pragma once

#include <string>
#include <vector>

#include <koi/GenericIf.h>

namespace Koi {

enum class JsonForm;

class ValueToJson {
 public:
  explicit ValueToJson( KoiType const * type );

  /// Appends a value of the type, on one line. Seconds that are no number are null.
  void append( std::string & out, GenericIf const & value ) const;

 private:
  KoiType const * const type_;
  JsonForm const form_;
  std::vector< std::string > names_;  // of the fields, each with what stands around it
  std::vector< ValueToJson > fields_;
};

/// The text in double quotes, as JSON writes it.
std::string jsonQuoted( std::string_view text );

}  // namespace Koi
