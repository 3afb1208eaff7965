// Emitter.h: the texts that a checked model becomes: which page a declaration takes and what fills
// it.
//
// The texts depend on the model alone. No C++ is longer than a line here; the rest is pages.
#pragma once

#include <string>

#include "Context.h"

namespace Koigen {

/// The whole generated header of a module.
std::string headerOf( Model const & model, Module const & module );

/// The module's <Module>.module.cpp, <Module>.module.2.cpp and so on, as many as `parts` says: cold
/// bodies and registration. The entities and reactors are dealt out evenly, the rest is in the
/// first.
std::vector< std::string > sourcesOf( Model const & model, Module const & module,
                                      std::size_t parts );

/// True when nothing is written for the module: all that it declares is foreign.
bool isForeign( Module const & module );

// One declaration each, without a blank line at either end.
std::string wrapperText( Context const & context, Declaration const & declaration );
std::string structureText( Context const & context, Declaration const & declaration );
std::string recordText( Context const & context, Declaration const & declaration );
std::string enumerationText( Context const & context, Declaration const & declaration );
std::string functionText( Context const & context, Declaration const & declaration );

// Members that values and entities share.
std::string constantText( Context const & context, Member const & member );
std::string memberFunctionText( Context const & context, Member const & member );

// Of EntityEmitter.cpp and ReactorEmitter.cpp. A body text is what the class leaves to the module's
// source.
std::string entityText( Context const & context, Declaration const & declaration );
std::string entityBodyText( Context const & context, Declaration const & declaration );
std::string reactorBodyText( Context const & context, Declaration const & declaration );
std::string genericEntityText( Context const & context, Declaration const & declaration );
std::string reactorText( Context const & context, Declaration const & declaration );

}  // namespace Koigen
