#include "Capture.h"

#include <pcap/pcap.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <poll.h>
#include <sys/stat.h>

namespace Frames {

namespace {

// libpcap asks for record headers of 16 bytes one by one; a wide buffer saves most system calls.
constexpr std::size_t readBufferSize = 1 << 18;

[[noreturn]] void refuse( std::string const & why ) { throw CaptureException( why ); }

// libpcap delivers nanoseconds in the field of the microseconds, as it was asked to, and takes any
// number that a damaged record has there.
CaptureTime timeOf( pcap_pkthdr const & header ) {
  constexpr std::int64_t second = 1'000'000'000;
  std::int64_t const nanoseconds = header.ts.tv_usec;
  std::int64_t const rest = ( nanoseconds % second + second ) % second;
  std::int64_t const carry = ( nanoseconds - rest ) / second;
  return { header.ts.tv_sec + carry, static_cast< std::uint32_t >( rest ) };
}

}  // namespace

double CaptureTime::asSeconds() const {
  // Microseconds of any date up to the year 2255 are whole numbers of 53 bits: one division,
  // rounded once.
  constexpr std::int64_t limit = 9'000'000'000;
  if( nanoseconds % 1000 == 0 && -limit < seconds && seconds < limit )
    return static_cast< double >( seconds * 1'000'000 + nanoseconds / 1000 ) / 1e6;
  return static_cast< double >( static_cast< long double >( seconds ) + nanoseconds / 1e9L );
}

void Capture::Closer::operator()( pcap * handle ) const { pcap_close( handle ); }

void Capture::FileCloser::operator()( std::FILE * file ) const {
  if( file != stdin )
    std::fclose( file );
}

Capture::Capture( std::string const & path, Opening opening )
    // The file is opened here, not by libpcap: its message would begin with the name of the file.
    : file_( path == "-" ? stdin : std::fopen( path.c_str(), "rb" ) ) {
  if( !file_ )
    refuse( std::string( "cannot be opened: " ) + std::strerror( errno ) );
  struct stat about {};
  if( opening == watched && fstat( fileno( file_.get() ), &about ) == 0 &&
      !S_ISREG( about.st_mode ) ) {
    waitsAt_ = fileno( file_.get() );
    std::setvbuf( file_.get(), nullptr, _IONBF, 0 );
  } else {
    std::setvbuf( file_.get(), nullptr, _IOFBF, readBufferSize );
    begin();
  }
}

void Capture::begin() {
  auto file = std::move( file_ );
  char why[PCAP_ERRBUF_SIZE] = "";
  handle_.reset(
      pcap_fopen_offline_with_tstamp_precision( file.get(), PCAP_TSTAMP_PRECISION_NANO, why ) );
  if( !handle_ )
    refuse( std::string( "cannot be read as a capture: " ) + why );
  file.release();  // handle_ closes it from here on

  int const linkType = pcap_datalink( handle_.get() );
  if( linkType == DLT_EN10MB )
    return;
  handle_.reset();
  char const * name = pcap_datalink_val_to_name( linkType );
  refuse( "link type is " + ( name ? std::string( name ) : std::to_string( linkType ) ) +
          ", not Ethernet" );
}

Capture::~Capture() = default;

int Capture::awaited() const {
  if( waitsAt_ < 0 || ( !handle_ && !file_ ) )
    return -1;
  pollfd at{ waitsAt_, POLLIN, 0 };
  return poll( &at, 1, 0 ) == 0 ? waitsAt_ : -1;
}

CapturedFrame const * Capture::next() {
  if( file_ )
    begin();
  if( !handle_ )
    return nullptr;
  pcap_pkthdr * header = nullptr;
  unsigned char const * bytes = nullptr;
  int const got = pcap_next_ex( handle_.get(), &header, &bytes );
  if( got == 1 ) {
    frame_.time = timeOf( *header );
    frame_.bytes = { bytes, header->caplen };
    frame_.wireSize = header->len;
    ++numFrames_;
    return &frame_;
  }
  auto const ended = std::move( handle_ );
  if( got != PCAP_ERROR_BREAK )  // which is how libpcap says that a file has ended
    refuse( pcap_geterr( ended.get() ) );
  return nullptr;
}

}  // namespace Frames
