#include "MacFilter.h"

#include <algorithm>
#include <charconv>

#include <koi/EnumType.h>

#include "NumberRange.h"
#include "Output.h"

namespace Lumo {
namespace {

constexpr U64 wholeAddress = 0xffffffffffff;

/// Words for several types.
constexpr struct {
  char const * word;
  bool ( *has )( Bridging::EntryType );
} kinds[] = { { "dynamic", Bridging::isEntryTypeDynamic },
              { "static", Bridging::isEntryTypeConfigured },
              { "local", Bridging::isEntryTypeLocal },
              { "remote", Bridging::isEntryTypeRemote },
              { "peer", Bridging::isEntryTypePeer },
              { "evpn", Bridging::isEntryTypeEvpn },
              { "controller", Bridging::isEntryTypeController } };

/// Adds an option that takes one or several texts with commas between them, and may be given
/// several times.
template< class Take >
CLI::Option * addList( CLI::App & command, std::string const & name,
                       std::string const & description, Take take ) {
  auto const taken = [name, take]( std::vector< std::string > const & texts ) {
    for( std::string const & text : texts )
      try {
        take( text );
      } catch( Koi::Exception const & e ) {
        throw Failure( wrongUse, name + " " + text + ": " + e.what() );
      }
  };
  return command.add_option_function< std::vector< std::string > >( name, taken, description )
      ->type_name( "LIST" )
      ->delimiter( ',' )
      ->take_all()
      ->expected( 1 );
}

}  // namespace

MacFilter::MacFilter( CLI::App & command ) {
  auto * const vlan = addList( command, "--vlan", "VLANs and ranges of them, as 10,20-29",
                               [this]( std::string const & text ) { addFids( text, 1, 4094 ); } );
  addList( command, "--fid",
           "filtering databases, which bear their VLANs' numbers unless they are shared",
           [this]( std::string const & text ) { addFids( text, 0, 65535 ); } )
      ->excludes( vlan );
  addList( command, "--port", "interfaces, as eth1,lag7", [this]( std::string const & text ) {
    ports_.insert( Wirex::IntfId( Koi::String8( text ) ) );
  } );
  addList( command, "--address",
           "addresses, with a prefix length or a mask behind a slash, as 00:00:5e:00:00:00/24",
           [this]( std::string const & text ) { addPattern( text ); } );
  addList( command, "--type",
           "dynamic, static, local, remote, peer, evpn, controller, or kinds as --json names them",
           [this]( std::string const & text ) { addTypes( text ); } );
}

bool MacFilter::admitsPlace( U64 place ) const {
  return ( !hasFids_ || fids_[place >> 48] ) &&
         ( patterns_.empty() || std::ranges::any_of( patterns_, [&]( Pattern const & pattern ) {
             return ( place & pattern.mask ) == pattern.address;
           } ) );
}

bool MacFilter::admits( MacEntry const & entry ) const {
  return admitsPlace( entry.place ) && ( ports_.empty() || ports_.contains( entry.intf ) ) &&
         ( types_.empty() || types_.contains( entry.entryType ) );
}

std::optional< U64 > MacFilter::addressOf( std::string_view text ) {
  constexpr std::size_t numDigits = 12;
  // What stands between groups of how many digits.
  constexpr struct {
    std::string_view sign;
    std::size_t groupSize;
  } notations[] = { { ":", 2 }, { "-", 2 }, { ".", 4 }, { "", numDigits } };
  for( auto const & notation : notations ) {
    std::string digits;
    std::string_view rest = text;
    for( bool isFirst = true; digits.size() < numDigits; isFirst = false ) {
      if( !isFirst && !rest.starts_with( notation.sign ) )
        break;
      rest.remove_prefix( isFirst ? 0 : notation.sign.size() );
      auto const group = rest.substr( 0, notation.groupSize );
      if( group.size() < notation.groupSize ||
          group.find_first_not_of( "0123456789abcdefABCDEF" ) != group.npos )
        break;
      digits += group;
      rest.remove_prefix( group.size() );
    }
    if( digits.size() != numDigits || !rest.empty() )
      continue;
    U64 number = 0;
    std::from_chars( digits.data(), digits.data() + numDigits, number, 16 );
    return number;
  }
  return std::nullopt;
}

void MacFilter::addFids( std::string_view text, unsigned low, unsigned high ) {
  auto const range = numberRangeOf( text, low, high );
  hasFids_ = true;
  for( unsigned fid = range.first; fid <= range.last; ++fid )
    fids_.set( fid );
}

void MacFilter::addPattern( std::string_view text ) {
  auto const slash = std::min( text.find( '/' ), text.size() );
  auto const address = addressOf( text.substr( 0, slash ) );
  if( !address )
    Koi::throwParseException(
        "a MAC address was expected, as 00:00:5e:00:53:01, 00-00-5e-00-53-01, 0000.5e00.5301 or "
        "00005e005301" );
  std::optional< U64 > mask = wholeAddress;
  if( slash != text.size() ) {
    auto const behind = text.substr( slash + 1 );
    mask = addressOf( behind );
    if( auto const length = numberOf( behind ); !mask && length && *length <= 48 )
      mask = wholeAddress & ~( wholeAddress >> *length );
  }
  if( !mask )
    Koi::throwParseException( "a prefix length from 0 to 48 or a mask was expected behind /" );
  patterns_.push_back( { *address & *mask, *mask } );
}

void MacFilter::addTypes( std::string_view text ) {
  bool isKnown = false;
  std::string all;
  for( auto const & kind : kinds )
    ( all += kind.word ) += ", ";
  for( auto const & entry : Bridging::_koiType_EntryType.enumType->entries ) {
    ( all += entry.name ) += ", ";
    for( auto const & kind : kinds )
      if( text == entry.name ||
          ( text == kind.word && kind.has( static_cast< Bridging::EntryType >( entry.value ) ) ) ) {
        types_.insert( entry.value );
        isKnown = true;
      }
  }
  if( !isKnown )
    Koi::throwParseException( "one of these was expected: " + all.substr( 0, all.size() - 2 ) );
}

}  // namespace Lumo
