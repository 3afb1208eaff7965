// Checker.h: whether a model means something: names resolve, keys are ordered or hashable, bounds
// exist.
#pragma once

#include <string>
#include <string_view>

#include "Model.h"
#include "Parser.h"

namespace Koigen {

/// Resolves the names in a parsed model. Throws ModelError with every error found, in the order of
/// files and lines; the model is then only half resolved and of no use.
void check( Model & model );

/// The checked model of one module from memory. Throws ModelError; nothing else, whatever the text.
Model parsedText( std::string_view text, std::string const & fileName );

}  // namespace Koigen
