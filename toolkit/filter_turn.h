#pragma once

#include <atomic>

// The turn of one message in a filter that one flag guards for the whole
// process, on whatever thread: a message that comes while another one has the
// turn gets none, and leaves the flag alone. Ends with the scope.
class FilterTurn {
public:
    explicit FilterTurn(std::atomic<bool>& flag) : flag_(flag), taken_(!flag.exchange(true)) {}
    ~FilterTurn() {
        if (taken_)
            flag_ = false;
    }
    FilterTurn(const FilterTurn&) = delete;
    FilterTurn& operator=(const FilterTurn&) = delete;

    bool IsTaken() const { return taken_; }

private:
    std::atomic<bool>& flag_;
    bool taken_;
};
