// Fold.h: breaks the lines of generated C++ that are too wide, as a person would.
#pragma once

#include <string>
#include <string_view>

namespace Koigen {

/// The same text with no line wider than `width` columns where a place to break it is known: a
/// comment between words, a body behind its brace, initialisers before their colon, lists behind a
/// comma. A text between quotes is never broken.
std::string folded( std::string_view text, std::size_t width = 100 );

}  // namespace Koigen
