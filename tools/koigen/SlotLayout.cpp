#include "SlotLayout.h"

#include <algorithm>
#include <utility>

#include "Findings.h"

namespace Koigen {
namespace {

constexpr std::uint32_t wordSize = 4;

std::uint32_t aligned( std::uint32_t offset, std::uint32_t to ) {
  return ( offset + to - 1 ) / to * to;
}

/// 0: no fixed one.
std::uint32_t sizeOf( Primitive primitive ) {
  switch( primitive ) {
    case Primitive::u8:
    case Primitive::boolean:
      return 1;
    case Primitive::u16:
      return 2;
    case Primitive::u32:
    case Primitive::i32:
      return 4;
    case Primitive::u64:
    case Primitive::seconds:
      return 8;
    case Primitive::none:
    case Primitive::string8:
    case Primitive::name:
      break;
  }
  return 0;
}

std::uint32_t sizeOf( TypeUse const & type ) {
  auto const * d = type.declaration;
  if( !d )
    return sizeOf( type.primitive );
  if( d->kind == Declaration::wrapper )
    return sizeOf( d->stored.primitive );
  if( d->kind == Declaration::enumeration )
    return 4;
  auto const number = integerOf( d->numBytes );
  constexpr std::uint64_t tooMany = SlotLayout::sizeMax + 1;
  return number ? static_cast< std::uint32_t >( std::min( number->magnitude, tooMany ) ) : 0;
}

std::uint32_t alignmentOf( std::uint32_t size ) {
  std::uint32_t alignment = wordSize;
  while( size % alignment != 0 )
    alignment /= 2;
  return alignment;
}

/// The type of a piece that has no fixed size, by its own name.
std::string nameOf( TypeUse const & type ) {
  auto const * d = type.declaration;
  if( d && d->kind != Declaration::wrapper )
    return d->fullName();
  return Koigen::nameOf( d ? d->stored.primitive : type.primitive );
}

class Walk {
 public:
  Walk( SlotLayout & layout, Declaration const & structure ) : layout_( layout ) {
    for( auto const & m : structure.members ) {
      if( m.kind != Member::field )
        continue;
      place_ = m.type.place;
      stopped_ = false;
      lay( m );
      if( !std::exchange( keyIsLaid_, true ) ) {
        layout_.numKeyPieces = layout_.pieces.size();
        layout_.keySize = at_ = aligned( at_, wordSize );
      }
    }
    layout_.valueSize = aligned( at_, wordSize );
    if( at_ > SlotLayout::sizeMax )
      fault( structure.place, "'" + structure.name + "' is larger than the " +
                                  std::to_string( SlotLayout::sizeMax ) +
                                  " bytes that may lie in a slot" );
  }

 private:
  void lay( Member const & m ) {
    auto const * d = m.type.declaration;
    bool const isValue =
        d ? d->kind <= Declaration::enumeration : m.type.primitive != Primitive::none;
    stopped_ |= !isValue;  // of which is told elsewhere
    if( stopped_ )
      return;
    path_.push_back( m.name );
    if( d && d->kind == Declaration::structure && !d->foreign )
      layFields( *d );
    else
      piece( m.type );
    path_.pop_back();
  }

  void layFields( Declaration const & d ) {
    auto const before = layout_.pieces.size();
    for( auto const & m : d.members )
      if( m.kind == Member::field )
        lay( m );
    if( layout_.pieces.size() == before )
      stopped_ = true;  // no fields, of which is told elsewhere
  }

  void piece( TypeUse const & type ) {
    std::uint32_t const size = sizeOf( type );
    SlotLayout::Piece piece{ path_, type, 0, size };
    stopped_ = size == 0 || at_ > SlotLayout::sizeMax;
    if( size == 0 )
      return fault( place_, "'" + piece.dotted() + "' cannot lie in a slot: " + nameOf( type ) +
                                " has no fixed size" );
    piece.offset = aligned( at_, alignmentOf( size ) );
    at_ = piece.offset + size;
    layout_.pieces.push_back( std::move( piece ) );
  }

  void fault( Place const & place, std::string const & text ) {
    layout_.faults.push_back( { place, text } );
  }

  SlotLayout & layout_;
  std::vector< std::string > path_;
  Place place_;  // of the type of the value's own field
  std::uint32_t at_ = 0;
  bool keyIsLaid_ = false;
  bool stopped_ = false;  // what stands in a field need not be looked at any further
};

}  // namespace

std::string SlotLayout::Piece::dotted( std::string const & between ) const {
  std::string text;
  for( auto const & name : path )
    text += ( text.empty() ? "" : between ) + name;
  return text;
}

SlotLayout slotLayoutOf( Declaration const & structure ) {
  SlotLayout layout;
  Walk( layout, structure );
  return layout;
}

}  // namespace Koigen
