#pragma once

/// A class of which one thing is not said.
class WithoutWords {
  public:
    /// Said.
    int size() const;
    void setSize(int size);
    int nothingIsSaidOfThis() const;
};
