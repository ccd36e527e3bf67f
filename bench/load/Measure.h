#pragma once

// The program of every contender: one load, measured.

#include "bench/load/Model.h"

struct Input {
    String switchConf;
    String contextFile; // the only one of the configuration
    bool isGzip = false;
};

/// The task on a command line; ends the process if the command line is wrong.
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

/// For main(). The result of `load( input )` lives until its memory is measured; `answer` says what it holds.
template<class Load, class AnswerOf>
int measure( int argc, char** argv, Load load, AnswerOf answer ) {
    Input const input = inputOf( argc, argv );
    Measurement measurement;
    auto const loaded = load( input );
    measurement.end();
    measurement.print( answer( loaded ) );
    return 0;
}
