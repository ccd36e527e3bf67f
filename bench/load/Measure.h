#pragma once

// What the program of every contender does: one load, measured.

#include "bench/load/Model.h"

struct Input {
    String switchConf;
    String contextFile; // the only one of the configuration
    bool isGzip = false;
};

/// Of a command line; ends the process when it is a wrong one.
Input inputOf( int argc, char** argv );

/// Wall-clock and processor time from the start on, and memory beyond what the process had at the start.
class Measurement {
  public:
    Measurement();

    /// Ends the time; notes the most memory of the process until now, and the heap's memory still in use.
    void end();
    /// Writes one JSON object to standard output.
    void print( Answer const& answer ) const;

  private:
    std::size_t resident_;
    std::size_t inUse_;
    double wall_;
    double processor_;
    std::size_t peak_ = 0;
    std::size_t model_ = 0;
};

/// For main(). What `load( input )` gives lives until its memory is measured; `answer` tells what it holds.
template<class Load, class AnswerOf>
int measure( int argc, char** argv, Load load, AnswerOf answer ) {
    Input const input = inputOf( argc, argv );
    Measurement measurement;
    auto const loaded = load( input );
    measurement.end();
    measurement.print( answer( loaded ) );
    return 0;
}
