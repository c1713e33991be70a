#include "OmbrixPlatform/ForkJoin.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ombrix {
namespace {

TEST(ForkJoin, EveryPlaceIsTakenOnceByAnyNumberOfWorkers) {
    for (const std::size_t workers : {1, 2, 7, 100}) {
        for (const std::size_t count : {0, 1, 15, 16, 17, 1000}) {
            std::vector<int> taken(count);
            ForkJoin::run(count, workers, [&](ForkJoin::Places& places) {
                places.take([&](std::size_t i) { ++taken[i]; });
            });
            EXPECT_EQ(taken, std::vector<int>(count, 1)) << workers;
        }
    }
}

TEST(ForkJoin, AFailureOfAnyWorkerEndsAllAndIsThrown) {
    for (const std::size_t place : {0, 500, 999}) {
        EXPECT_THROW(ForkJoin::run(1000, 4,
                                   [&](ForkJoin::Places& places) {
                                       places.take([&](std::size_t i) {
                                           if (i == place) throw std::runtime_error("here");
                                       });
                                   }),
                     std::runtime_error)
            << place;
    }
}
}  // namespace
}  // namespace ombrix
