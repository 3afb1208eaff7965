// MacFilter.h: which entries of a MAC address table are asked for, as options of a command. One
// thread uses an object.
#pragma once

#include <CLI/CLI.hpp>
#include <bitset>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "MacEntry.h"

namespace Lumo {

/// Each option that is given must admit an entry; of one option's alternatives any does.
class MacFilter {
 public:
  /// Adds the options to the command, which fill this object when it parses. What they refuse is a
  /// Failure then.
  explicit MacFilter( CLI::App & command );
  MacFilter( MacFilter const & ) = delete;

  bool admits( MacEntry const & entry ) const;
  /// Whether an entry of that place may be admitted, whatever else it has.
  bool admitsPlace( U64 place ) const;

  /// The address of a text in any of the usual notations: 00:00:5e:00:53:01, 00-00-5e-00-53-01,
  /// 0000.5e00.5301, 00005e005301, in either case; none for another text.
  static std::optional< U64 > addressOf( std::string_view text );

 private:
  struct Pattern {
    U64 address, mask;
  };
  // Raise Koi::Exception for what none of them is.
  void addFids( std::string_view text, unsigned low, unsigned high );
  void addPattern( std::string_view text );
  void addTypes( std::string_view text );

  bool hasFids_ = false;
  std::bitset< 65536 > fids_;
  std::set< Wirex::IntfId > ports_;
  std::vector< Pattern > patterns_;
  std::set< U32 > types_;
};

}  // namespace Lumo
