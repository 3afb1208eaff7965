// Subcommands.h: which commands the groups of `lumo` have.
#pragma once

#include <memory>

#include "Subcommand.h"

namespace Lumo {

/// Adds one to its group, which fills the object when it parses.
using AddSubcommand = std::unique_ptr< Subcommand >( CLI::App & group );

AddSubcommand showInterface, showSubinterface, showVlanInterface, showPortId;
AddSubcommand showIntfCounters, clearIntfCounters;
AddSubcommand showVlanCounters, clearVlanCounters;
AddSubcommand tableList, tableStat, tableDump, tableVerify, tableFollow;
AddSubcommand showMac;
AddSubcommand watchMac;

}  // namespace Lumo
