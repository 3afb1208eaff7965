#include <koijson/NearestName.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Koi {
namespace {

/// How many characters are to be put in, taken out or replaced to make one of the other.
std::size_t distance( std::string_view from, std::string_view to ) {
  std::vector< std::size_t > row( to.size() + 1 );  // to the beginnings of `to`
  std::iota( row.begin(), row.end(), std::size_t{ 0 } );
  for( std::size_t i = 0; i < from.size(); ++i ) {
    std::size_t diagonal = std::exchange( row[0], i + 1 );
    for( std::size_t j = 0; j < to.size(); ++j ) {
      std::size_t const replaced = diagonal + ( from[i] != to[j] );
      diagonal = row[j + 1];
      row[j + 1] = std::min( { replaced, row[j] + 1, diagonal + 1 } );
    }
  }
  return row.back();
}

}  // namespace

std::string_view nearestName( std::string_view given,
                              std::vector< std::string_view > const & names ) {
  std::string_view nearest;
  std::size_t least = given.size() / 3 + 1;
  for( std::string_view const name : names )
    if( std::size_t const changes = distance( given, name ); changes < least ) {
      least = changes;
      nearest = name;
    }
  return nearest;
}

std::string didYouMean( std::string_view given, std::vector< std::string_view > const & names ) {
  std::string_view const nearest = nearestName( given, names );
  return nearest.empty() ? "" : "; did you mean \"" + std::string( nearest ) + "\"?";
}

}  // namespace Koi
