#pragma once

#include <utility>
#include <vector>

namespace quench {

// A symmetric positive definite matrix held by its lower envelope in reverse Cuthill-McKee order,
// factorised by Cholesky. Small and plain: it serves the independent check of posted results.
class SkylineMatrix {
public:
    SkylineMatrix() = default;
    // size unknowns; edges: the off-diagonal pairs that may hold a value.
    SkylineMatrix(int size, const std::vector<std::pair<int, int>>& edges);

    void Clear();
    // Adds to entry (row, column); an off-diagonal value stands for both symmetric entries.
    void Add(int row, int column, double value);
    // Solves the system; the matrix is factorised in place, so Clear before the next assembly.
    std::vector<double> Solve(const std::vector<double>& rhs);

private:
    double& Entry(int row, int column); // in permuted indices, column <= row

    int size_ = 0;
    std::vector<int> order_;    // permuted index -> original
    std::vector<int> position_; // original -> permuted index
    std::vector<int> first_;    // first column held in each permuted row
    std::vector<std::size_t> start_;
    std::vector<double> values_;
};

} // namespace quench
