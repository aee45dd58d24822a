// Test helper: memory between two inaccessible pages, so that any access
// just outside it faults.
#pragma once

#include <cstddef>

namespace zvl_test {

class Fenced {
  public:
    // `pages` accessible pages, readable and writable.
    explicit Fenced(size_t pages);
    ~Fenced();
    Fenced(const Fenced&) = delete;
    Fenced& operator=(const Fenced&) = delete;

    double* begin() { return reinterpret_cast<double*>(base_ + page_); }
    double* end() { return reinterpret_cast<double*>(base_ + (pages_ + 1) * page_); }

  private:
    size_t page_, pages_;
    char* base_;
};

}  // namespace zvl_test
