// JsonException.h: what is raised when a JSON text cannot become an entity.
#pragma once

#include <stdexcept>

namespace Koi {

/// A JSON text that is none, or that says what an entity refuses. The text names the place:
/// "/vlanConfig/10/adminState: a string was expected, not a number".
class JsonException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace Koi
