# Writes one C++ source that holds koigen's pages as text:
#   cmake -DPAGES=a.h;b.cpp -DOUTPUT=Pages.cpp -P EmbedPages.cmake
#
# A page is named by its file without the suffix.

set( entries "" )
foreach( file IN LISTS PAGES )
  cmake_path( GET file STEM name )
  file( READ "${file}" text )
  if( text MATCHES "\\)page\"" )
    message( FATAL_ERROR "${file}: a page cannot hold )page\" for that ends its text in the program" )
  endif()
  string( APPEND entries "  if( name == \"${name}\" )\n    return R\"page(${text})page\";\n" )
endforeach()
file( WRITE "${OUTPUT}" "#include \"Pages.h\"

namespace Koigen {

std::optional< std::string_view > embeddedPage( std::string_view name ) {
${entries}  return {};
}

}  // namespace Koigen
" )
