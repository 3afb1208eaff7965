#include "MacEntry.h"

#include <cmath>

#include <koi/Text.h>
#include <koi/UtcText.h>
#include <koijson/ValueToJson.h>

namespace Lumo {

MacEntry::MacEntry( Quill::Bridging::QuillFdbStatus const & value )
    : place( placeOf( value.key() ) ),
      intf( value.intf() ),
      lastMoveTime( value.lastMoveTime() ),
      moves( value.moves() ),
      entryType( value.entryType() ) {}

U64 MacEntry::numberOf( Wirex::EthAddr const & address ) {
  U64 number = 0;
  for( Koi::U8 const byte : address.bytes() )
    number = number << 8 | byte;
  return number;
}

Wirex::EthAddr MacEntry::address() const {
  Koi::U8 bytes[6];
  for( int i = 0; i < 6; ++i )
    bytes[i] = static_cast< Koi::U8 >( place >> ( 40 - 8 * i ) );
  return Wirex::EthAddr::ofBytes( bytes );
}

std::vector< Column > MacTexts::columns() {
  return { { "VLAN", true }, { "MAC address" }, { "type" },
           { "port" },       { "moves", true }, { "last move" } };
}

void MacTexts::fit( Columns & columns, MacEntry const & entry, std::size_t first ) {
  // All columns but the last one, whose times take longest to make.
  std::size_t const sizes[numColumns - 1] = {
      number( fid_, entry.fid() ).size(), addressOf( entry ).size(),
      nameOf( entry.entryType ).text.size(), nameOf( entry.intf ).text.size(),
      number( moves_, entry.moves ).size() };
  for( std::size_t const size : sizes )
    columns.fit( first++, size );
}

MacTexts::Cells MacTexts::cells( MacEntry const & entry ) {
  time_.clear();
  // Who was configured has not been seen to move.
  if( isEntryTypeConfigured( entry.entryType ) )
    time_ = "-";
  else
    Koi::appendUtcText( time_, entry.lastMoveTime );
  return { number( fid_, entry.fid() ),    addressOf( entry ),
           nameOf( entry.entryType ).text, nameOf( entry.intf ).text,
           number( moves_, entry.moves ),  time_ };
}

std::string const & MacTexts::number( std::string & text, U32 number ) {
  text.clear();
  Koi::appendText( text, number );
  return text;
}
std::string const & MacTexts::addressOf( MacEntry const & entry ) {
  return address_ = entry.address().stringValue().view();
}

void MacTexts::appendJson( std::string & out, MacEntry const & entry ) {
  out += "{\"fid\": ";
  Koi::appendText( out, entry.fid() );
  out += ", \"address\": \"";
  out += entry.address().stringValue().view();
  out += "\", \"intf\": ";
  out += nameOf( entry.intf ).json;
  out += ", \"entryType\": ";
  out += nameOf( entry.entryType ).json;
  out += ", \"moves\": ";
  Koi::appendText( out, entry.moves );
  out += ", \"lastMoveTime\": ";
  if( std::isfinite( entry.lastMoveTime ) )
    Koi::appendText( out, entry.lastMoveTime );
  else
    out += "null";
  out += '}';
}

MacTexts::Name const & MacTexts::nameOf( Wirex::IntfId intf ) {
  auto const [at, isNew] = intfs_.try_emplace( intf.value() );
  if( isNew ) {
    auto const name = intf.stringValue();
    at->second = { std::string( name.empty() ? "-" : name.view() ), Koi::jsonQuoted( name ) };
  }
  return at->second;
}

MacTexts::Name const & MacTexts::nameOf( Bridging::EntryType entryType ) {
  auto const [at, isNew] = types_.try_emplace( entryType );
  if( isNew )
    at->second = { std::string( entryTypeStr( entryType ).view() ),
                   Koi::jsonQuoted( stringValue( entryType ) ) };
  return at->second;
}

}  // namespace Lumo
