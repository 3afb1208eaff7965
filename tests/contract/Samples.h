// Samples.h: values of any registered type, made and taken apart by its type node alone. Tests
// only.
//
// The samples are the same on every machine and in every run.
#pragma once

#include <string>
#include <vector>

#include <koi/GenericIf.h>

namespace Tests {

using Koi::GenericIf;
using Koi::GenericIfPtr;
using Koi::KoiType;

/// All registered types whose values stand alone: neither entities nor reactors.
std::vector< KoiType const * > valueTypes();

/// Values of a type: the bounds of each field, awkward bytes, numbers without an enumerator.
std::vector< GenericIfPtr > samplesOf( KoiType const * type );

/// At most `most` of them, spread over all.
std::vector< GenericIfPtr > fewSamplesOf( KoiType const * type, std::size_t most );

/// The encoding of a value in the attribute log.
std::string logOf( GenericIf const & v );

/// The value whose encoding these bytes are, all of them.
GenericIfPtr ofLog( KoiType const * type, std::string const & bytes );

/// The value of one field; the fields of a value.
GenericIfPtr fieldOf( GenericIf const & v, std::size_t index );
std::vector< GenericIfPtr > fieldsOf( GenericIf const & v );

/// The value itself and every value that stands in it, at whatever depth.
std::vector< GenericIfPtr > allIn( GenericIf const & v );

/// What reflection says: op 9, and the order where the type has one.
bool equal( GenericIf const & a, GenericIf const & b );
bool less( GenericIf const & a, GenericIf const & b );

/// A string or a name, which differ only in what they are for.
bool isString( KoiType const * type );

/// The bytes as hexadecimal digits, and back.
std::string hexOf( std::string const & bytes );
std::string ofHex( std::string const & digits );
/// Eight hexadecimal digits, the most significant first.
std::string hexOf( Koi::U32 number );

}  // namespace Tests
