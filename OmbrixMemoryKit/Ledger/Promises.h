// Which commitments are one promise, made again and again: those with the same direction, the same
// person and the same words.
#pragma once

#include <cstddef>
#include <functional>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "OmbrixMemoryKit/Land/LandModels.h"

namespace ombrix {

/// Gives each promise a number.
class Promises {
  public:
    /// What stands for itself: nobody is named, or there are no words.
    static constexpr std::size_t alone = 0;

    /// For about `count` promises, or more.
    explicit Promises(std::size_t count) {
        numbers_.max_load_factor(0.25F);
        numbers_.reserve(count);
    }

    /// The key is in lower case and names somebody; the words are as `CommitmentID::normalize`
    /// gives them.
    std::size_t numberOf(CommitmentDirection direction, std::string_view whoKey,
                         std::string_view words);
    /// One more than the last number given.
    std::size_t end() const { return numbers_.size() + 1; }

    /// A commitment as its promise sees it; the views are the caller's.
    struct Member {
        std::size_t promise = alone;
        std::string_view said{}, id{};
    };
    /// Calls `take` for those that are alone, one by one, then for each promise, in the order of
    /// their first members. It gets indices of `members`, the last said first, of one day the
    /// smaller id. Linear, apart from sorting within each promise.
    void forEach(std::span<const Member> members,
                 const std::function<void(std::span<const std::size_t>)>& take) const;

  private:
    std::pmr::monotonic_buffer_resource memory_;
    std::pmr::unordered_map<std::pmr::string, std::size_t> numbers_{&memory_};
    std::pmr::string key_;  // reused
};
}  // namespace ombrix
