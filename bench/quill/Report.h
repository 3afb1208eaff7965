// Report.h: gathers the figures of all passes and prints their medians.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace Bench {

class Report {
 public:
  /// A line about a peer that is not among the figures.
  void leftOut( std::string const & line );
  /// One figure of one pass. Columns and rows stand in the order of their first figures.
  void add( std::size_t numEntries, std::string const & peer, std::string const & figure,
            double value );

  /// The setting, then for each size a table of medians, a row a peer; with a peer in `against`,
  /// its figures as ratios besides; and which goals ours has reached, as far as the run says.
  void print( std::string const & against ) const;
  /// The same as one JSON object: setting, leftOut, and figures with median and passes.
  void printJson() const;

 private:
  struct Size {
    std::vector< std::string > peers, figures;
    std::map< std::pair< std::string, std::string >, std::vector< double > > passes;

    /// Not a number when there is none.
    double median( std::string const & peer, std::string const & figure ) const;
  };

  void printTable( Size const & size, std::string const & against ) const;
  void printGoals( Size const & size ) const;

  std::vector< std::string > leftOut_;
  std::map< std::size_t, Size > sizes_;
};

}  // namespace Bench
