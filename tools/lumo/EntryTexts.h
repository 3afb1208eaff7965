// EntryTexts.h: a table's entries as rows of texts, a column for each field.
#pragma once

#include <string>
#include <vector>

#include <koi/GenericIf.h>

#include "Columns.h"

namespace Lumo {

using Koi::GenericIf;
using Koi::GenericIfPtr;
using Koi::KoiType;

/// "key.fid", "key.addr", "intf": what has fields is shown by them.
void addEntryHeadings( KoiType const & type, std::string const & name,
                       std::vector< Column > & columns );
void addEntryTexts( GenericIf const & value, Row & row );

/// Columns as wide as the rows need, with what is all numbers to the right.
Columns entryColumns( std::vector< Column > columns, std::vector< Row > const & rows );

/// A key from its text; or, when it has fields, from theirs with commas between them. Raises
/// ParseException or RangeException.
GenericIfPtr keyFromText( KoiType const & type, std::string const & text );

}  // namespace Lumo
