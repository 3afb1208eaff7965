// Pages.h: the pages that the build put into the program.
#pragma once

#include <optional>
#include <string_view>

namespace Koigen {

/// The text of the page of that file name without its suffix; none when there is no such page. Its
/// body is written by cmake/EmbedPages.cmake.
std::optional< std::string_view > embeddedPage( std::string_view name );

}  // namespace Koigen
