// Text.h: the canonical text of primitive values, and the pieces of the strict parser.
//
// A parser accepts exactly what the printer produces: no blanks, no signs but the minus of a signed
// number, no leading zeros, no second spelling of a byte. After an exception the iterator stands
// somewhere in the refused text. Pure functions; any thread.
#pragma once

#include <concepts>
#include <limits>
#include <string>
#include <string_view>

#include <koi/Exception.h>
#include <koi/Export.h>
#include <koi/String8.h>
#include <koi/Types.h>

namespace Koi {

/// Appends decimal digits.
KOI_PUBLIC void appendText( std::string & out, unsigned long long v );
KOI_PUBLIC void appendText( std::string & out, long long v );
/// Appends "True" or "False".
KOI_PUBLIC void appendText( std::string & out, bool v );
/// Appends the shortest decimal form that reads back as the same number, whatever the locale.
KOI_PUBLIC void appendText( std::string & out, Seconds v );
/// Appends the bytes in single quotes: backslash and quote behind a backslash, newline as \n, every
/// other byte below 32 or above 126 as \xHH in lower case.
KOI_PUBLIC void appendText( std::string & out, String8 const & v );
KOI_PUBLIC void appendText( std::string & out, Name const & v );
template< std::integral Number >
void appendText( std::string & out, Number v ) {
  if constexpr( std::is_signed_v< Number > )
    appendText( out, static_cast< long long >( v ) );
  else
    appendText( out, static_cast< unsigned long long >( v ) );
}

/// The canonical text of a primitive.
template< class T >
requires std::integral< T > || std::same_as< T, Seconds > || std::same_as< T, String8 > ||
    std::same_as< T, Name >
        String8 valueToStrep( T const & v ) {
  std::string text;
  appendText( text, v );
  return String8( text );
}

/// Steps over the literal. Raises ParseException "'<literal>' was expected at '<rest>'".
KOI_PUBLIC void needString( String8::IteratorConst & it, String8::IteratorConst const & end,
                            std::string_view literal );

/// Requires that parsing ended where the text ends. Raises ParseException "'<rest>' is left over".
KOI_PUBLIC void strepToValueEnd( String8 const & text, String8::IteratorConst const & it );

/// Reads an unsigned number of at most 64 bits. Raises ParseException "a number was expected at
/// '<rest>'"; a number that is larger than `most` raises RangeException, unless `saturate` is set:
/// then most + 1 comes back, for a caller with a range of its own.
KOI_PUBLIC U64 numberFromText( String8::IteratorConst & it, String8::IteratorConst const & end,
                               U64 most, bool saturate = false );

/// Read a primitive; ParseException or RangeException as above.
KOI_PUBLIC I32 signedFromText( String8::IteratorConst & it, String8::IteratorConst const & end );
KOI_PUBLIC bool boolFromText( String8::IteratorConst & it, String8::IteratorConst const & end );
KOI_PUBLIC Seconds secondsFromText( String8::IteratorConst & it,
                                    String8::IteratorConst const & end );
KOI_PUBLIC String8 stringFromText( String8::IteratorConst & it,
                                   String8::IteratorConst const & end );

/// The identifier that stands at `it`, possibly empty; steps over it.
KOI_PUBLIC std::string_view identifierFromText( String8::IteratorConst & it,
                                                String8::IteratorConst const & end );

/// The text from `it` on as an error message shows it: one line, cut after 40 bytes, and what
/// cannot be printed as \n or \xHH.
KOI_PUBLIC std::string restForMessage( String8::IteratorConst const & it,
                                       String8::IteratorConst const & end );

}  // namespace Koi
