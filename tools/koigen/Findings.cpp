#include "Findings.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <set>

#include "Parser.h"

namespace Koigen {
namespace {

std::set< std::string, std::less<> > const reserved = { "alignas",
                                                        "alignof",
                                                        "and",
                                                        "and_eq",
                                                        "asm",
                                                        "auto",
                                                        "bitand",
                                                        "bitor",
                                                        "bool",
                                                        "break",
                                                        "case",
                                                        "catch",
                                                        "char",
                                                        "char16_t",
                                                        "char32_t",
                                                        "char8_t",
                                                        "class",
                                                        "co_await",
                                                        "co_return",
                                                        "co_yield",
                                                        "compl",
                                                        "concept",
                                                        "const",
                                                        "const_cast",
                                                        "consteval",
                                                        "constexpr",
                                                        "constinit",
                                                        "continue",
                                                        "decltype",
                                                        "default",
                                                        "delete",
                                                        "do",
                                                        "double",
                                                        "dynamic_cast",
                                                        "else",
                                                        "enum",
                                                        "explicit",
                                                        "export",
                                                        "extern",
                                                        "false",
                                                        "float",
                                                        "for",
                                                        "friend",
                                                        "goto",
                                                        "if",
                                                        "inline",
                                                        "int",
                                                        "long",
                                                        "mutable",
                                                        "namespace",
                                                        "new",
                                                        "noexcept",
                                                        "not",
                                                        "not_eq",
                                                        "nullptr",
                                                        "operator",
                                                        "or",
                                                        "or_eq",
                                                        "private",
                                                        "protected",
                                                        "public",
                                                        "register",
                                                        "requires",
                                                        "return",
                                                        "short",
                                                        "signed",
                                                        "sizeof",
                                                        "static",
                                                        "static_assert",
                                                        "static_cast",
                                                        "struct",
                                                        "switch",
                                                        "template",
                                                        "this",
                                                        "thread_local",
                                                        "throw",
                                                        "true",
                                                        "try",
                                                        "typedef",
                                                        "typeid",
                                                        "typename",
                                                        "union",
                                                        "unsigned",
                                                        "using",
                                                        "virtual",
                                                        "void",
                                                        "volatile",
                                                        "wchar_t",
                                                        "while",
                                                        "xor",
                                                        "xor_eq",
                                                        "reinterpret_cast",
                                                        "std",
                                                        "errno",
                                                        "assert" };

struct PrimitiveFact {
  Primitive primitive;
  char const * name;
  Integer lowest = {};
  Integer highest = {};
};

constexpr PrimitiveFact facts[] = {
    { Primitive::u8, "u8", {}, { false, 0xff } },
    { Primitive::u16, "u16", {}, { false, 0xffff } },
    { Primitive::u32, "u32", {}, { false, 0xffffffff } },
    { Primitive::u64, "u64", {}, { false, 0xffffffffffffffff } },
    { Primitive::i32, "i32", { true, 0x80000000 }, { false, 0x7fffffff } },
    { Primitive::boolean, "bool" },
    { Primitive::seconds, "Koi::Seconds" },
    { Primitive::string8, "Koi::String8" },
    { Primitive::name, "Koi::Name" },
};

PrimitiveFact const & factOf( Primitive primitive ) {
  static constexpr PrimitiveFact no{ Primitive::none, "" };
  for( auto const & fact : facts )
    if( fact.primitive == primitive )
      return fact;
  return no;
}

}  // namespace

std::string Findings::text( Model const & model ) const {
  auto const fileIndex = [&]( Finding const & f ) {
    return std::find_if( model.modules.begin(), model.modules.end(),
                         [&]( Module const & m ) { return m.place.file == f.place.file; } ) -
           model.modules.begin();
  };
  auto sorted = found_;
  std::stable_sort( sorted.begin(), sorted.end(), [&]( auto const & a, auto const & b ) {
    return std::tuple( fileIndex( a ), a.place.line, a.place.column ) <
           std::tuple( fileIndex( b ), b.place.line, b.place.column );
  } );
  std::string out;
  for( auto const & f : sorted )
    out += ( out.empty() ? "" : "\n" ) + errorText( f.place, f.text );
  return out;
}

void checkName( Place const & place, std::string const & name, Findings & findings ) {
  if( reserved.count( name ) )
    findings.add( place, "'" + name + "' is a word of C++" );
  else if( name.starts_with( "koi" ) || name.starts_with( "Koi" ) || name.starts_with( "KOI" ) )
    findings.add( place, "'" + name + "' begins with koi, which is the generator's own" );
  else if( name.starts_with( '_' ) || name.ends_with( '_' ) || name.find( "__" ) != name.npos )
    findings.add( place, "'" + name +
                             "' begins or ends with an underscore or has two together: such names "
                             "are the generator's own" );
}

void checkDoc( Place const & place, std::string const & name, std::string const & doc,
               Findings & findings ) {
  if( doc.empty() )
    findings.add( place, "'" + name + "' has no documentation" );
  else if( doc.ends_with( '\\' ) || doc.find( "\\\n" ) != doc.npos )
    findings.add( place, "the documentation of '" + name + "' has a line that ends in '\\'" );
}

std::optional< Integer > integerOf( std::string const & text ) {
  Integer number;
  std::string_view digits = text;
  if( digits.starts_with( '-' ) ) {
    number.negative = true;
    digits.remove_prefix( 1 );
  }
  int base = 10;
  if( digits.starts_with( "0x" ) ) {
    base = 16;
    digits.remove_prefix( 2 );
  }
  auto const end = digits.data() + digits.size();
  auto const [at, error] = std::from_chars( digits.data(), end, number.magnitude, base );
  if( error != std::errc() || at != end )
    return {};
  // In C++ a leading 0 would mean another number.
  if( base == 10 && digits.size() > 1 && digits.front() == '0' )
    return {};
  return number;
}

bool less( Integer a, Integer b ) {
  if( a.negative != b.negative )
    return a.negative && ( a.magnitude || b.magnitude );
  return a.negative ? a.magnitude > b.magnitude : a.magnitude < b.magnitude;
}

bool fits( Integer number, Primitive primitive ) {
  return isWholeNumber( primitive ) && !less( number, lowestOf( primitive ) ) &&
         !less( highestOf( primitive ), number );
}

char const * nameOf( Primitive primitive ) { return factOf( primitive ).name; }
Integer lowestOf( Primitive primitive ) { return factOf( primitive ).lowest; }
Integer highestOf( Primitive primitive ) { return factOf( primitive ).highest; }

bool isWholeNumber( Primitive primitive ) { return factOf( primitive ).highest.magnitude > 0; }

}  // namespace Koigen
