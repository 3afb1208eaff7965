// Parser.h: from the text of a model file to its Module, as written and not yet checked.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "Model.h"

namespace Koigen {

/// What is wrong with a model, one error a line: "VlanId.koi:7:15: a type name was expected".
struct ModelError : std::runtime_error {
  using runtime_error::runtime_error;
};

/// "VlanId.koi:7:15: text".
std::string errorText( Place const & place, std::string const & text );

/// The module that the text says. Throws ModelError at the first place that is not the language.
Module parsedModule( std::string_view text, std::string const & fileName );

}  // namespace Koigen
