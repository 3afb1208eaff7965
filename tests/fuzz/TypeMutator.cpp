// TypeMutator.cpp: keeps libFuzzer's mutations of a typed input meaningful: the name in the first
// line is left whole or exchanged for another type's, and all else is mutated behind it.

#include <cstdint>
#include <cstring>
#include <random>

#include "TypedInput.h"

extern "C" std::size_t LLVMFuzzerMutate( std::uint8_t * data, std::size_t size,
                                         std::size_t maxSize );

extern "C" std::size_t LLVMFuzzerCustomMutator( std::uint8_t * data, std::size_t size,
                                                std::size_t maxSize, unsigned seed ) {
  std::minstd_rand random( seed );
  Fuzz::TypedInput const input = Fuzz::typedInput( data, size );
  std::string const rest( input.rest );
  auto const & types = Fuzz::valueTypes();
  bool const otherType = !input.type || random() % 32 == 0;
  auto const * type = otherType ? types[random() % types.size()] : input.type;

  std::string const head = std::string( type->name ) + '\n';
  if( head.size() + rest.size() > maxSize )
    return LLVMFuzzerMutate( data, size, maxSize );
  std::memcpy( data, head.data(), head.size() );
  std::memcpy( data + head.size(), rest.data(), rest.size() );
  return head.size() + LLVMFuzzerMutate( data + head.size(), rest.size(), maxSize - head.size() );
}
