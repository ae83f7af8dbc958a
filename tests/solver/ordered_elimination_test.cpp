// The node equations solved in a fill-reducing order give the corrections of the elimination in
// node order up to round-off, fill in less, and hand a step with a negligible pivot back.

#include "solver/ordered_elimination.h"
#include "solver/solve_matrix.h"
#include "tests/support/network_builder.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

namespace quench {
namespace {

// A system shaped like the node equations: a grid of `side` x `side` nodes joined to their
// neighbours by slopes, a little leakage on the diagonal, unequal slopes either way round as the
// supply's closed rows give, and its rows and columns numbered in a shuffled order.
struct GridSystem {
    int Size = 0;
    std::vector<std::vector<double>> A; // by row and column, 0-based
    std::vector<double> B;
    std::vector<std::pair<int, int>> Places; // off-diagonal places, 1-based

    GridSystem(int side, unsigned seed) : Size(side * side) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> slope(0.2, 40);
        std::vector<int> number(static_cast<std::size_t>(Size));
        std::iota(number.begin(), number.end(), 0);
        std::shuffle(number.begin(), number.end(), random);
        A.assign(static_cast<std::size_t>(Size), std::vector<double>(std::size_t(Size), 0.0));
        const auto join = [&](int p, int q) {
            const auto i = static_cast<std::size_t>(number[static_cast<std::size_t>(p)]);
            const auto j = static_cast<std::size_t>(number[static_cast<std::size_t>(q)]);
            const double s = slope(random);
            A[i][i] += s;
            A[j][j] += s;
            A[i][j] = -s;
            A[j][i] = -0.9 * s;
            Places.emplace_back(static_cast<int>(i) + 1, static_cast<int>(j) + 1);
            Places.emplace_back(static_cast<int>(j) + 1, static_cast<int>(i) + 1);
        };
        for (int row = 0; row < side; ++row) {
            for (int column = 0; column < side; ++column) {
                const int here = row * side + column;
                if (column + 1 < side) {
                    join(here, here + 1);
                }
                if (row + 1 < side) {
                    join(here, here + side);
                }
            }
        }
        B.resize(static_cast<std::size_t>(Size));
        for (std::size_t i = 0; i < B.size(); ++i) {
            A[i][i] += 0.05;
            B[i] = std::cos(static_cast<double>(i));
        }
    }

    // Into the ordered elimination's places.
    void Load(OrderedElimination& elimination) const {
        elimination.ClearValues();
        std::vector<double>& values = elimination.Values();
        for (int row = 1; row <= Size; ++row) {
            for (int column = 1; column <= Size; ++column) {
                const double value =
                    A[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column - 1)];
                const int slot = elimination.Slot(row, column);
                if (value != 0) {
                    EXPECT_GE(slot, 0) << row << ", " << column;
                    values[static_cast<std::size_t>(slot)] = value;
                }
            }
            values[static_cast<std::size_t>(elimination.RightSideSlot(row))] =
                B[static_cast<std::size_t>(row - 1)];
        }
    }
};

// The same system as linked rows in node order, solved by SolveMatrix.
struct NodeOrder : testing::SolverHarness {
    std::size_t Fill = 0;

    std::vector<double> Solve(const GridSystem& system) {
        const int n = system.Size;
        State.Matrix.Reserve(n + 2, 1000);
        State.Matrix.Clear(n + 1);
        State.Edges.DistinctNodes = n;
        State.RowCount = n;
        State.Correction.assign(static_cast<std::size_t>(n) + 2, 0.0);
        for (int i = 1; i <= n; ++i) {
            for (int j = 1; j <= n; ++j) {
                State.Matrix.SetElement(
                    i, j,
                    system.A[static_cast<std::size_t>(i - 1)][static_cast<std::size_t>(j - 1)]);
            }
            State.Matrix.SetElement(i, n + 1, system.B[static_cast<std::size_t>(i - 1)]);
        }
        EXPECT_EQ(SolveMatrix(Context, State), MatrixOutcome::Solved);
        Fill = State.NodeOrder.FillCount();
        return State.Correction;
    }
};

TEST(OrderedElimination, GivesTheNodeOrderCorrectionsWithLessFill) {
    for (const unsigned seed : {1u, 2u, 3u}) {
        const GridSystem system(14, seed);
        OrderedElimination ordered;
        ordered.Analyse(system.Size, system.Places);
        ASSERT_EQ(ordered.Size(), system.Size);
        system.Load(ordered);
        std::vector<double> solution(static_cast<std::size_t>(system.Size) + 1, 0.0);
        ASSERT_TRUE(ordered.Solve(solution));

        NodeOrder reference;
        const std::vector<double> expected = reference.Solve(system);
        double largest = 0;
        for (int k = 1; k <= system.Size; ++k) {
            largest = std::max(largest, std::fabs(expected[static_cast<std::size_t>(k)]));
        }
        for (int k = 1; k <= system.Size; ++k) {
            EXPECT_NEAR(solution[static_cast<std::size_t>(k)],
                        expected[static_cast<std::size_t>(k)], 1e-10 * largest)
                << "seed " << seed << ", row " << k;
        }
        // The residual of the equations as given.
        for (int i = 0; i < system.Size; ++i) {
            double sum = 0;
            for (int j = 0; j < system.Size; ++j) {
                sum += system.A[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] *
                       solution[static_cast<std::size_t>(j) + 1];
            }
            EXPECT_NEAR(sum, system.B[static_cast<std::size_t>(i)], 1e-9);
        }
        // A shuffled grid fills in a great deal in node order, far less in the ordered one.
        EXPECT_LT(2 * ordered.FillCount(), reference.Fill) << "seed " << seed;

        // A second step on the same pattern needs no new analysis: new numbers, same places.
        GridSystem scaled = system;
        for (auto& value : scaled.B) {
            value *= -3;
        }
        scaled.Load(ordered);
        ASSERT_TRUE(ordered.Solve(solution));
        for (int k = 1; k <= system.Size; ++k) {
            EXPECT_NEAR(solution[static_cast<std::size_t>(k)],
                        -3 * expected[static_cast<std::size_t>(k)], 1e-9 * largest);
        }
    }
}

TEST(OrderedElimination, ANegligiblePivotHandsTheStepBack) {
    // Two nodes joined by one pipe and nothing else: the second pivot vanishes.
    OrderedElimination ordered;
    ordered.Analyse(2, {{1, 2}, {2, 1}});
    EXPECT_GE(ordered.Slot(1, 2), 0);
    EXPECT_EQ(ordered.Slot(1, 1), ordered.DiagonalSlot(1));
    std::vector<double>& values = ordered.Values();
    const auto set = [&](int row, int column, double value) {
        values[static_cast<std::size_t>(ordered.Slot(row, column))] = value;
    };
    set(1, 1, 5);
    set(2, 2, 5);
    set(1, 2, -5);
    set(2, 1, -5);
    values[static_cast<std::size_t>(ordered.RightSideSlot(1))] = 1;
    values[static_cast<std::size_t>(ordered.RightSideSlot(2))] = 1;
    EXPECT_TRUE(ordered.DiagonalsSet());
    std::vector<double> solution{0, 7, 7};
    EXPECT_FALSE(ordered.Solve(solution));
    EXPECT_EQ(solution, (std::vector<double>{0, 7, 7})); // left as it was
    // A leak at one node makes the system regular again.
    ordered.ClearValues();
    set(1, 1, 6);
    set(2, 2, 5);
    set(1, 2, -5);
    set(2, 1, -5);
    values[static_cast<std::size_t>(ordered.RightSideSlot(1))] = 1;
    values[static_cast<std::size_t>(ordered.RightSideSlot(2))] = 0;
    ASSERT_TRUE(ordered.Solve(solution));
    EXPECT_NEAR(solution[1], 1.0, 1e-12);
    EXPECT_NEAR(solution[2], 1.0, 1e-12);
    // A missing diagonal is seen before any elimination.
    ordered.ClearValues();
    set(1, 1, 6);
    EXPECT_FALSE(ordered.DiagonalsSet());
    // A place outside the pattern has no slot.
    OrderedElimination apart;
    apart.Analyse(3, {{1, 2}, {2, 1}});
    EXPECT_EQ(apart.Slot(1, 3), -1);
    EXPECT_EQ(apart.Slot(4, 1), -1);
}

} // namespace
} // namespace quench
