#include <koi/Text.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace Koi {
namespace {

using It = String8::IteratorConst;

constexpr char hexDigits[] = "0123456789abcdef";

bool isDigit( char c ) { return c >= '0' && c <= '9'; }
bool isLetter( char c ) { return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || c == '_'; }
bool isPrinted( char c ) { return c >= ' ' && c <= '~'; }
bool isPlain( char c ) { return isPrinted( c ) && c != '\'' && c != '\\'; }

void appendEscaped( std::string & out, U8 byte ) {
  out += '\\';
  if( byte == '\n' )
    out += 'n';
  else if( byte == '\'' || byte == '\\' )
    out += static_cast< char >( byte );
  else
    ( ( out += 'x' ) += hexDigits[byte >> 4] ) += hexDigits[byte & 15];
}

template< class Number >
void appendDigits( std::string & out, Number v ) {
  char digits[32];
  auto const done = std::to_chars( digits, digits + sizeof digits, v );
  out.append( digits, done.ptr );
}

[[noreturn]] void refuse( std::string const & expected, It const & it, It const & end ) {
  throwParseException( expected + " was expected at '" + restForMessage( it, end ) + "'" );
}

/// The digits of a number without leading zeros.
std::string_view digitsAt( It const & it, It const & end ) {
  It const stop = std::find_if_not( it, end, isDigit );
  if( stop == it || ( *it == '0' && stop - it > 1 ) )
    refuse( "a number", it, end );
  return { it, static_cast< std::size_t >( stop - it ) };
}

int hexValue( char c ) {
  char const * at = std::find( hexDigits, hexDigits + 16, c );
  return at == hexDigits + 16 ? -1 : static_cast< int >( at - hexDigits );
}

/// The byte that the escape at `it`, behind its backslash, stands for; only the canonical one.
char escapedByte( It & it, It const & end ) {
  It const start = it;
  if( it != end ) {
    char const c = *it++;
    if( c == '\\' || c == '\'' )
      return c;
    if( c == 'n' )
      return '\n';
    if( c == 'x' && end - it >= 2 && hexValue( it[0] ) >= 0 && hexValue( it[1] ) >= 0 ) {
      char const byte = static_cast< char >( hexValue( it[0] ) * 16 + hexValue( it[1] ) );
      it += 2;
      if( byte != '\n' && ( byte < ' ' || byte > '~' ) )
        return byte;
    }
  }
  refuse( "an escape", start, end );
}

}  // namespace

void appendText( std::string & out, unsigned long long v ) { appendDigits( out, v ); }
void appendText( std::string & out, long long v ) { appendDigits( out, v ); }
void appendText( std::string & out, bool v ) { out += v ? "True" : "False"; }
void appendText( std::string & out, Seconds v ) { appendDigits( out, v ); }
void appendText( std::string & out, Name const & v ) { appendText( out, v.string() ); }

void appendText( std::string & out, String8 const & v ) {
  out += '\'';
  for( It it = v.begin(); it != v.end(); ) {
    It const special = std::find_if_not( it, v.end(), isPlain );
    out.append( it, special );
    it = special;
    if( it == v.end() )
      break;
    appendEscaped( out, static_cast< U8 >( *it++ ) );
  }
  out += '\'';
}

void needString( It & it, It const & end, std::string_view literal ) {
  if( static_cast< std::size_t >( end - it ) < literal.size() ||
      std::string_view( it, literal.size() ) != literal )
    refuse( "'" + std::string( literal ) + "'", it, end );
  it += literal.size();
}

void strepToValueEnd( String8 const & text, It const & it ) {
  if( it != text.end() )
    throwParseException( "'" + restForMessage( it, text.end() ) + "' is left over" );
}

U64 numberFromText( It & it, It const & end, U64 most, bool saturate ) {
  std::string_view const digits = digitsAt( it, end );
  U64 value = 0;
  auto const done = std::from_chars( digits.begin(), digits.end(), value );
  it += digits.size();
  if( done.ec == std::errc() && value <= most )
    return value;
  if( saturate )
    return most + 1;
  throwRangeException( std::string( digits ) + " > " + std::to_string( most ) + " not allowed" );
}

I32 signedFromText( It & it, It const & end ) {
  bool const negative = it != end && *it == '-';
  It at = it + negative;
  std::string_view const digits = digitsAt( at, end );
  if( negative && digits == "0" )
    refuse( "a number", it, end );
  std::string_view const number( it, digits.size() + negative );
  I32 value = 0;
  auto const done = std::from_chars( number.begin(), number.end(), value );
  it += number.size();
  if( done.ec != std::errc() )
    throwRangeException( std::string( number ) + " < -2147483648 or > 2147483647 not allowed" );
  return value;
}

bool boolFromText( It & it, It const & end ) {
  It at = it;
  std::string_view const word = identifierFromText( at, end );
  if( word != "True" && word != "False" )
    refuse( "True or False", it, end );
  it = at;
  return word == "True";
}

Seconds secondsFromText( It & it, It const & end ) {
  Seconds value = 0;
  auto const done = std::from_chars( it, end, value );
  std::string printed;
  if( done.ec == std::errc() )
    appendText( printed, value );
  if( done.ec != std::errc() || !std::isfinite( value ) ||
      printed != std::string_view( it, static_cast< std::size_t >( done.ptr - it ) ) )
    refuse( "a number of seconds", it, end );
  it = done.ptr;
  return value;
}

String8 stringFromText( It & it, It const & end ) {
  needString( it, end, "'" );
  std::string bytes;
  for( ;; ) {
    It const special = std::find_if_not( it, end, isPlain );
    bytes.append( it, special );
    it = special;
    if( it == end || ( *it != '\'' && *it != '\\' ) )
      refuse( "the end of a string", it, end );
    if( *it++ == '\'' )
      return String8( bytes );
    bytes += escapedByte( it, end );
  }
}

std::string_view identifierFromText( It & it, It const & end ) {
  It const start = it;
  if( it != end && isLetter( *it ) )
    it = std::find_if_not( it, end, []( char c ) { return isLetter( c ) || isDigit( c ); } );
  return { start, static_cast< std::size_t >( it - start ) };
}

std::string restForMessage( It const & it, It const & end ) {
  constexpr std::ptrdiff_t most = 40;
  std::string text;
  for( It at = it; at != end && at - it < most; ++at )
    if( isPrinted( *at ) )
      text += *at;
    else
      appendEscaped( text, static_cast< U8 >( *at ) );
  return end - it > most ? text + "..." : text;
}

}  // namespace Koi
