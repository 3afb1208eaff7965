// Files.h: models from files, and generated texts into files.
#pragma once

#include <string>
#include <vector>

#include "Model.h"

namespace Koigen {

struct Call {
  std::vector< std::string > models;   // to be emitted
  std::vector< std::string > imports;  // folders where `uses` is looked up besides
  std::string prefix = "Lumo/";        // of the headers that are written
  std::string importPrefix = "Lumo/";  // of the headers of imported modules
};

/// All models of the call and those that they use, parsed and checked. Throws ModelError with every
/// error found; a file that cannot be read is one of them.
Model loaded( Call const & call );

/// Writes the text unless the file holds it already; then its time stays as it is. Throws
/// std::runtime_error naming the file.
void writeChanged( std::string const & path, std::string const & text );

/// The whole file; empty for one that cannot be read.
std::string contentOf( std::string const & path, bool * found = nullptr );

}  // namespace Koigen
