#include "solver/node_order_elimination.h"
#include "solver/sparse_matrix.h"

#include <algorithm>
#include <cstring>
#include <random>

#include <gtest/gtest.h>

namespace quench {
namespace {

// The elimination as the rows stand in linked lists, worked in place: pivot column by pivot
// column, each row below whose first element lies in that column drops it and takes its multiple
// of the pivot row's rest, new elements linked in; then back substitution, a row's first element
// its diagonal and its last its right side.
struct LinkedRows {
    SparseMatrix Matrix;
    std::size_t Fill = 0;

    NodeOrderOutcome Solve(int rows, std::vector<double>& correction) {
        for (int k = 1; k <= rows - 1; ++k) {
            int pivot = Matrix.RowHead(k);
            while (pivot != 0 && Matrix.Element(pivot).Column < k) {
                pivot = Matrix.Element(pivot).Next;
            }
            if (pivot == 0 || Matrix.Element(pivot).Value == 0) {
                return NodeOrderOutcome::ZeroPivot;
            }
            for (int row = k + 1; row <= rows; ++row) {
                const int head = Matrix.RowHead(row);
                if (head != 0 && Matrix.Element(head).Column == k) {
                    Eliminate(row, pivot);
                }
            }
        }
        return SubstituteBack(rows, correction) ? NodeOrderOutcome::Solved
                                                : NodeOrderOutcome::ZeroDiagonal;
    }

    void Eliminate(int row, int pivot) {
        const int head = Matrix.RowHead(row);
        const double factor = Matrix.Element(head).Value / Matrix.Element(pivot).Value;
        if (Matrix.Element(head).Next != 0) {
            Matrix.SetRowHead(row, Matrix.Element(head).Next);
        } else {
            Matrix.SetRowHead(row, Matrix.NewElement(row, 0, 0));
            ++Fill;
        }
        int previous = 0;
        int at = Matrix.RowHead(row);
        for (int from = Matrix.Element(pivot).Next; from != 0; from = Matrix.Element(from).Next) {
            const int column = Matrix.Element(from).Column;
            const double value = Matrix.Element(from).Value;
            while (at != 0 && Matrix.Element(at).Column < column) {
                previous = at;
                at = Matrix.Element(at).Next;
            }
            if (at != 0 && Matrix.Element(at).Column == column) {
                Matrix.Element(at).Value = Matrix.Element(at).Value - factor * value;
                continue;
            }
            const int created = Matrix.NewElement(column, -factor * value, at);
            ++Fill;
            if (previous == 0) {
                Matrix.SetRowHead(row, created);
            } else {
                Matrix.Element(previous).Next = created;
            }
            previous = created;
        }
    }

    static double& At(std::vector<double>& correction, int column) {
        if (column >= static_cast<int>(correction.size())) {
            correction.resize(static_cast<std::size_t>(column) + 1, 0.0);
        }
        return correction[static_cast<std::size_t>(column)];
    }

    bool SubstituteBack(int rows, std::vector<double>& correction) {
        const int last = Matrix.RowHead(rows);
        At(correction, rows) = 0;
        if (last != 0 && Matrix.Element(last).Value != 0) {
            const int next = Matrix.Element(last).Next;
            At(correction, rows) =
                (next == 0 ? 0.0 : Matrix.Element(next).Value) / Matrix.Element(last).Value;
        }
        for (int k = rows - 1; k >= 1; --k) {
            const int head = Matrix.RowHead(k);
            const double diagonal = head == 0 ? 0.0 : Matrix.Element(head).Value;
            if (diagonal == 0) {
                return false;
            }
            double sum = 0;
            double rightSide = 0;
            for (int at = Matrix.Element(head).Next; at != 0; at = Matrix.Element(at).Next) {
                if (Matrix.Element(at).Next == 0) {
                    rightSide = Matrix.Element(at).Value;
                } else {
                    sum += Matrix.Element(at).Value * At(correction, Matrix.Element(at).Column);
                }
            }
            At(correction, k) = (rightSide - sum) / diagonal;
        }
        return true;
    }
};

// Random node equations with the odd rows the first steps meet: rows without a diagonal or a
// right side, empty rows, elements stored as 0 that still exist, columns beyond the rows, and now
// and then an element in column 0, which no pivot column reaches.
SparseMatrix RandomRows(std::mt19937& random, int rows, int columns) {
    std::uniform_real_distribution<double> number(-5, 5);
    std::uniform_int_distribution<int> percent(0, 99);
    SparseMatrix matrix;
    matrix.Reserve(rows + 1, 64);
    matrix.Clear(rows);
    const int density = 5 + percent(random) / 4;
    for (int row = 1; row <= rows; ++row) {
        const int kind = percent(random);
        if (kind < 3) {
            continue; // an empty row
        }
        if (percent(random) < 2) {
            matrix.SetElement(row, 0, number(random));
            matrix.SetElement(row, 0, percent(random) < 50 ? 0.0 : number(random));
        }
        for (int column = 1; column <= columns; ++column) {
            const bool diagonal = column == row;
            const bool rightSide = column == columns;
            const bool wanted = diagonal    ? kind >= 10
                                : rightSide ? kind >= 25
                                            : percent(random) < density;
            if (!wanted) {
                continue;
            }
            const double value = diagonal ? 10 + number(random) : number(random);
            matrix.SetElement(row, column, value);
            if (percent(random) < 4) {
                matrix.SetElement(row, column, 0.0); // stored as 0, still there
            }
        }
    }
    return matrix;
}

// Solves the rows with the elimination and as linked rows: the outcomes, every correction (to the
// last bit) and the fills agree. Returns the outcome.
NodeOrderOutcome ExpectLinkedRowsNumbers(NodeOrderElimination& elimination,
                                         const SparseMatrix& matrix, int rows, int trial,
                                         const std::vector<int>& renumbered = {}) {
    LinkedRows reference;
    reference.Matrix = matrix;
    std::vector<double> expected(static_cast<std::size_t>(rows) + 1, 0.25);
    std::vector<double> found = expected;
    const NodeOrderOutcome want = reference.Solve(rows, expected);
    EXPECT_EQ(elimination.Solve(matrix, rows, found, renumbered), want) << "trial " << trial;
    if (want == NodeOrderOutcome::Solved) {
        EXPECT_TRUE(found.size() == expected.size() &&
                    std::memcmp(found.data(), expected.data(), found.size() * sizeof(double)) == 0)
            << "trial " << trial;
        EXPECT_EQ(elimination.FillCount(), reference.Fill) << "trial " << trial;
    }
    return want;
}

TEST(NodeOrderElimination, GivesTheLinkedRowsNumbersToTheLastBit) {
    std::mt19937 random(20261126);
    int solved = 0;
    int zeroPivots = 0;
    int zeroDiagonals = 0;
    for (int trial = 0; trial < 3000; ++trial) {
        // Now and then a system wide enough for the marks to span several words.
        const int rows = trial % 100 == 0 ? 150 + trial / 20 : 1 + trial % 23;
        const int columns = rows + 1 + (trial % 7 == 0 ? 2 : 0);
        NodeOrderElimination elimination;
        const SparseMatrix built = RandomRows(random, rows, columns);
        const NodeOrderOutcome outcome = ExpectLinkedRowsNumbers(elimination, built, rows, trial);
        solved += outcome == NodeOrderOutcome::Solved ? 1 : 0;
        zeroPivots += outcome == NodeOrderOutcome::ZeroPivot ? 1 : 0;
        zeroDiagonals += outcome == NodeOrderOutcome::ZeroDiagonal ? 1 : 0;
    }
    // Every kind of ending is met, and most systems solve.
    EXPECT_GT(solved, 1000);
    EXPECT_GT(zeroPivots, 20);
    EXPECT_GT(zeroDiagonals, 0);
}

TEST(NodeOrderElimination, ARowLeftEmptyGetsAZeroDiagonalAndTheMatrixStaysAsBuilt) {
    // Row 2 holds only column 1: eliminated, it is left with a zero diagonal and so a zero pivot.
    SparseMatrix matrix;
    matrix.Reserve(4, 16);
    matrix.Clear(3);
    matrix.SetElement(1, 1, 2.0);
    matrix.SetElement(1, 4, 1.0);
    matrix.SetElement(2, 1, 3.0);
    matrix.SetElement(3, 3, 1.0);
    const int elements = matrix.ElementCount();
    NodeOrderElimination elimination;
    std::vector<double> correction(4, 0.0);
    EXPECT_EQ(elimination.Solve(matrix, 3, correction), NodeOrderOutcome::ZeroPivot);
    EXPECT_EQ(matrix.ElementCount(), elements);
    // With a third row to take its place the second row is the last: its right side, the
    // element after its diagonal, is what the first row's right side left in it.
    matrix.Clear(2);
    matrix.SetElement(1, 1, 2.0);
    matrix.SetElement(1, 3, 1.0);
    matrix.SetElement(2, 1, 3.0);
    matrix.SetElement(2, 2, 4.0);
    ASSERT_EQ(elimination.Solve(matrix, 2, correction), NodeOrderOutcome::Solved);
    EXPECT_EQ(correction[2], (0 - 1.5 * 1.0) / 4.0);
    EXPECT_EQ(correction[1], 1.0 / 2.0); // row 1's last element is its right side
}

// Rows 1 to `rows`: those before `changed` as `head` holds them, their columns renumbered (when
// `renumbered` is not empty), the rest as `tail` holds them; every element that exists copied as
// it is, stored zeros included.
SparseMatrix Spliced(const SparseMatrix& head, const SparseMatrix& tail, int changed, int rows,
                     const std::vector<int>& renumbered) {
    SparseMatrix matrix;
    matrix.Reserve(rows + 1, 64);
    matrix.Clear(rows);
    for (int row = 1; row <= rows; ++row) {
        const bool headRow = row < changed;
        const SparseMatrix& from = headRow ? head : tail;
        for (int at = from.RowHead(row); at != 0; at = from.Element(at).Next) {
            const int column = from.Element(at).Column;
            const int placed = headRow && !renumbered.empty()
                                   ? renumbered[static_cast<std::size_t>(column)]
                                   : column;
            matrix.SetElement(row, placed, 1.0);
            matrix.SetElement(row, placed, from.Element(at).Value);
        }
    }
    return matrix;
}

// Columns 0 to `columns` renumbered around one more put in before `changed` (by +1), or with
// `changed` itself taken out (by -1; it has no number left, 0, and so lands in column 0 when
// Spliced copies it).
std::vector<int> Renumbered(int changed, int columns, int by) {
    std::vector<int> renumbered(static_cast<std::size_t>(columns) + 1);
    for (int column = 0; column <= columns; ++column) {
        const int number = column < changed              ? column
                           : column == changed && by < 0 ? 0
                                                         : column + by;
        renumbered[static_cast<std::size_t>(column)] = number;
    }
    return renumbered;
}

TEST(NodeOrderElimination, TakesOverTheRowsASystemRepeatsAndGivesAFreshOnesNumbers) {
    std::mt19937 random(20261127);
    NodeOrderElimination elimination; // carried from each system to the next
    int takenOver = 0;
    int renumberedTakenOver = 0;
    int solved = 0;
    for (int trial = 0; trial < 2500; ++trial) {
        const int rows = trial % 100 == 0 ? 130 : 2 + trial % 23;
        const SparseMatrix first = RandomRows(random, rows, rows + 1);
        std::vector<double> ignored(static_cast<std::size_t>(rows) + 1, 0.0);
        elimination.Solve(first, rows, ignored);
        // The next system begins with the first one's rows and goes on with others, perhaps
        // more or fewer of them; now and then it is the first one again, or its columns are
        // renumbered around one put in or taken out (as when the HMD node moves), or renumbered
        // out of order.
        const int kind = trial % 6;
        int nextRows = std::max(1, rows + std::uniform_int_distribution<int>(-2, 2)(random));
        std::vector<int> renumbered;
        int inserted = rows + 2;
        if (kind == 0) {
            nextRows = rows;
        } else if (kind <= 3) {
            const int by = kind == 3 ? -1 : 1;
            nextRows = rows + by;
            inserted = std::uniform_int_distribution<int>(1, rows + 1)(random);
            renumbered = Renumbered(inserted, rows + 1, by);
            if (kind == 2) {
                std::swap(renumbered[static_cast<std::size_t>(rows)],
                          renumbered[static_cast<std::size_t>(rows) + 1]);
            }
        }
        const int changed =
            std::uniform_int_distribution<int>(1, std::min(rows, nextRows) + 1)(random);
        const SparseMatrix next = kind == 0
                                      ? first
                                      : Spliced(first, RandomRows(random, nextRows, nextRows + 1),
                                                changed, nextRows, renumbered);
        const NodeOrderOutcome outcome =
            ExpectLinkedRowsNumbers(elimination, next, nextRows, trial, renumbered);
        const int reused = elimination.ReusedRows();
        EXPECT_LE(reused, std::min(nextRows, inserted - 1)) << "trial " << trial;
        if (kind == 2) {
            EXPECT_EQ(reused, 0) << "trial " << trial; // numbers out of order: nothing taken
        }
        takenOver += reused > 0 ? 1 : 0;
        renumberedTakenOver += (kind == 1 || kind == 3) && reused > 0 ? 1 : 0;
        solved += outcome == NodeOrderOutcome::Solved ? 1 : 0;
    }
    EXPECT_GT(renumberedTakenOver, 200);
    EXPECT_GT(solved, 700);
    EXPECT_GT(takenOver, 700);
    // Told to forget, it takes nothing over, even from the very same rows.
    const SparseMatrix same = RandomRows(random, 8, 9);
    std::vector<double> correction(9, 0.0);
    elimination.Solve(same, 8, correction);
    elimination.Forget();
    elimination.Solve(same, 8, correction);
    EXPECT_EQ(elimination.ReusedRows(), 0);
}

} // namespace
} // namespace quench
