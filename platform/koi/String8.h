// String8.h: the system's string: shared bytes that never change. Any byte may stand in it.
//
// Copies share the bytes and cost one count; the count obeys the rules of Ptr.h.
#pragma once

#include <compare>
#include <concepts>
#include <iosfwd>
#include <string>
#include <string_view>

#include <koi/Export.h>
#include <koi/Hash.h>
#include <koi/Ptr.h>

namespace Koi {

class KOI_PUBLIC String8 {
 public:
  using IteratorConst = char const *;

  constexpr String8() = default;
  String8( std::string_view bytes );
  String8( char const * text ) : String8( std::string_view( text ) ) {}
  String8( std::string const & text ) : String8( std::string_view( text ) ) {}
  String8( String8 const & other ) : rep_( other.rep_ ) {
    if( rep_ )
      rep_->refs.add();
  }
  String8( String8 && other ) noexcept : rep_( std::exchange( other.rep_, nullptr ) ) {}
  ~String8() {
    if( rep_ && rep_->refs.drop() )
      release( rep_ );
  }
  String8 & operator=( String8 other ) noexcept {
    std::swap( rep_, other.rep_ );
    return *this;
  }

  /// In bytes.
  std::size_t size() const { return rep_ ? rep_->size : 0; }
  bool empty() const { return rep_ == nullptr; }
  /// The bytes and a NUL behind them, for as long as this string lives.
  char const * data() const { return rep_ ? rep_->bytes() : noBytes; }
  IteratorConst begin() const { return data(); }
  IteratorConst end() const { return data() + size(); }
  std::string_view view() const { return { data(), size() }; }
  operator std::string_view() const { return view(); }

  /// MurmurHash3 of the bytes.
  U32 hash() const { return hashOfBytes( data(), size() ); }

  friend bool operator==( String8 const & a, String8 const & b ) {
    return a.rep_ == b.rep_ || a.view() == b.view();
  }
  template< class Text >
  requires std::convertible_to< Text const &, std::string_view > &&
      (!std::same_as< Text, String8 >)friend bool
      operator==( String8 const & a, Text const & b ) {
    return a.view() == std::string_view( b );
  }
  /// By unsigned bytes; a prefix comes first.
  friend std::strong_ordering operator<=>( String8 const & a, String8 const & b ) {
    return a.view() <=> b.view();
  }

 private:
  struct Rep {
    RefWord refs;
    U32 size;
    char * bytes() { return reinterpret_cast< char * >( this + 1 ); }
  };
  static void release( Rep * rep );

  /// An object, not a literal: begin() and end() of an empty string must agree wherever they were
  /// compiled.
  static constexpr char noBytes[1] = {};

  Rep * rep_ = nullptr;
};

/// Writes the bytes as they are.
KOI_PUBLIC std::ostream & operator<<( std::ostream & out, String8 const & text );

/// The name of an entity within its parent. A string that is a name is made so, and read so, only
/// on purpose.
class KOI_PUBLIC Name {
 public:
  Name() = default;
  explicit Name( String8 text ) : text_( std::move( text ) ) {}
  explicit Name( char const * text ) : text_( text ) {}
  explicit Name( std::string_view text ) : text_( text ) {}
  explicit Name( std::string const & text ) : text_( text ) {}
  explicit operator String8 const &() const { return text_; }

  String8 const & string() const { return text_; }
  std::string_view view() const { return text_.view(); }
  bool empty() const { return text_.empty(); }
  U32 hash() const { return text_.hash(); }
  friend bool operator==( Name const &, Name const & ) = default;
  friend std::strong_ordering operator<=>( Name const & a, Name const & b ) {
    return a.text_ <=> b.text_;
  }

 private:
  String8 text_;
};

/// Writes the bytes as they are.
KOI_PUBLIC std::ostream & operator<<( std::ostream & out, Name const & name );

/// Formats as printf does.
KOI_PUBLIC String8 format( char const * pattern, ... ) __attribute__( ( format( printf, 1, 2 ) ) );

}  // namespace Koi
