
/// Whether it comes before the other one in the order, by hand.
bool koiIsBefore( $Type$ const & other ) const;
friend bool operator<( $Type$ const & a, $Type$ const & b ) { return a.koiIsBefore( b ); }
friend bool operator>( $Type$ const & a, $Type$ const & b ) { return b.koiIsBefore( a ); }
friend bool operator<=( $Type$ const & a, $Type$ const & b ) { return !b.koiIsBefore( a ); }
friend bool operator>=( $Type$ const & a, $Type$ const & b ) { return !a.koiIsBefore( b ); }
