#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <thread>
#include <vector>

inline constexpr std::size_t threadCount = 8;

/// Calls a function with 0, 1, ... on as many threads, all let go at once; returns when all are done.
template<class Function>
void inThreads( Function function ) {
    std::atomic<bool> go = false;
    std::vector<std::thread> threads;
    for( std::size_t i = 0; i < threadCount; ++i )
        threads.emplace_back( [ &go, &function, i ] {
            while( !go )
                std::this_thread::yield();
            function( i );
        } );
    go = true;
    for( std::thread& thread : threads )
        thread.join();
}

/// Repeats a step with 0, 1, ... on as many threads, for so long that they meet even on a busy machine;
/// returns the number of all steps made.
template<class Step>
std::uint64_t repeatInThreads( Step step ) {
    std::atomic<std::uint64_t> total = 0;
    inThreads( [ &total, &step ]( std::size_t i ) {
        auto const end = std::chrono::steady_clock::now() + std::chrono::milliseconds( 300 );
        std::uint64_t steps = 0;
        while( std::chrono::steady_clock::now() < end )
            for( int batch = 0; batch < 100; ++batch, ++steps )
                step( i );
        total += steps;
    } );
    return total;
}
