// EntityFromJson.h: fills an entity of any type from a JSON text, through reflection alone. For the
// programs that read configuration; used on the entity's thread.
//
//   an entity             an object of its attributes; what is left out stays
//   a scalar attribute    a number, a string, true or false; an enumerator's name
//   a value of fields     an object of its fields, or its canonical text in a string
//   a collection          an object: the text of each key, and the member; or, as keys of several
//                         fields have long texts, an array of {"key": ..., "value": ...}. Where
//                         members hold their key, they may leave it out
//   children              the same. A child that is not there yet is built: its parameters stand
//                         beside its attributes, and are zero or empty where they are left out
//   an only child         an object of its attributes
//   a queue               an array, from the head on
#pragma once

#include <string_view>

#include <koi/EntityBase.h>
#include <koijson/JsonException.h>

namespace Koi {

/// Makes the entity what the text says of it, as one transaction; what the text does not name stays
/// as it is. Raises JsonException for a text that is no JSON, says something twice, or says what
/// the entity or anything in it refuses, as a read-only proxy does; it is unchanged then, and
/// nobody was told anything. What observers raise leaves when all is done.
void entityFromJson( Entity & entity, std::string_view text );

}  // namespace Koi
