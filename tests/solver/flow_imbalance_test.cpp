#include "solver/build_half_edges.h"
#include "solver/flow_imbalance.h"
#include "tests/support/network_builder.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

// The supply 10000 feeds node 20, which feeds node 30 through two parallel pipes; node 30, listed
// before 20, lets 10 gpm out as a fixed flow and node 20 is a sprinkler taking 5 gpm.
struct ParallelPipes : testing::SolverHarness {
    ParallelPipes() {
        const int numbers[] = {FirstInflowNode, 30, 20};
        for (int position = 1; position <= 3; ++position) {
            Model.NodeRecord[static_cast<std::size_t>(position)].Number = numbers[position - 1];
        }
        Model.NumberOfNodes = 3;
        Model.NodeRecord[2].FixedFlow = 10;
        Model.NodeRecord[3].KFactor = 5.6;
        Pipe(1, "10000", "20");
        Pipe(2, "20", "30");
        Pipe(3, "30", "20");
        Model.NumberOfPipes = 3;
        BuildHalfEdges(Model, State);
        SetFlow(1, 15);
        SetFlow(2, 4);
        SetFlow(3, -6);
        State.Edges[State.Edges.FirstRowOf(20)].SprinklerFlow = 5;
    }

    void Pipe(int row, const char* begin, const char* end) {
        CalcPipeRecord& pipe = Model.CalcPipeRecord[static_cast<std::size_t>(row)];
        pipe.BegNode = begin;
        pipe.EndNode = end;
        pipe.InsideDiameter = 2;
        pipe.TotalLength = 10;
        pipe.Material = 1;
    }

    // Both halves of a pipe of CalcPipeRecord, the flow from its first node to its second.
    void SetFlow(int pipe, double flow) {
        const CalcPipeRecord& record = Model.CalcPipeRecord[static_cast<std::size_t>(pipe)];
        const int begin = NodeNumberOf(record.BegNode);
        const int end = NodeNumberOf(record.EndNode);
        int ends = 0;
        for (int row = 1; row <= State.Edges.Count; ++row) {
            HalfEdge& edge = State.Edges[row];
            // The ends of the parallel pipes stand in table order at both nodes.
            const bool forward = edge.FromNode == begin && edge.ToNode == end;
            const bool backward = edge.FromNode == end && edge.ToNode == begin;
            if ((forward || backward) && OrdinalAt(row) == Ordinal(pipe)) {
                edge.Flow = forward ? flow : -flow;
                ++ends;
            }
        }
        EXPECT_EQ(ends, 2);
    }

    // Among the pipes joining 20 and 30, the place of a pipe and of a row in their node's run.
    static int Ordinal(int pipe) { return pipe == 3 ? 1 : 0; }
    int OrdinalAt(int row) const {
        int place = 0;
        for (int other = State.Edges.FirstRowOf(State.Edges[row].FromNode); other < row; ++other) {
            place += State.Edges[other].ToNode == State.Edges[row].ToNode ? 1 : 0;
        }
        return place;
    }

    double Imbalance(int position) { return NodeFlowImbalance(Context, State, position); }
};

TEST(FlowImbalance, EachParallelPipeCountsOnceAtBothEnds) {
    ParallelPipes net;
    EXPECT_DOUBLE_EQ(net.Imbalance(2), 0); // 4 + 6 in, 10 out
    EXPECT_DOUBLE_EQ(net.Imbalance(3), 0); // 15 in, 4 + 6 out, 5 discharged
    EXPECT_DOUBLE_EQ(MeasureFlowImbalance(net.Context, net.State), 0);
    EXPECT_EQ(net.State.NotConverged, 0);

    // One of the two parallel pipes carries a gallon more: both of its nodes see it, each once.
    net.SetFlow(3, -7);
    EXPECT_DOUBLE_EQ(net.Imbalance(2), 1);
    EXPECT_DOUBLE_EQ(net.Imbalance(3), -1);
    EXPECT_DOUBLE_EQ(MeasureFlowImbalance(net.Context, net.State), 1);
    EXPECT_EQ(net.State.NotConverged, 1);
}

TEST(FlowImbalance, EqualFlowsIntoANodeAddAndTheSupplyIsNoEquation) {
    ParallelPipes net;
    // Two equal flows of 5 gpm arrive at node 30 and 10 leave it: no cancelling of alike sizes.
    net.SetFlow(2, 5);
    net.SetFlow(3, -5);
    EXPECT_DOUBLE_EQ(net.Imbalance(2), 0);
    net.SetFlow(1, 20);
    EXPECT_DOUBLE_EQ(net.Imbalance(3), 5);
    EXPECT_DOUBLE_EQ(net.Imbalance(1), 0); // the supply gives what the network takes

    // A metric project measures in litres: 0.003 gpm is over 0.01 L/min.
    net.SetFlow(1, 15.003);
    net.State.NotConverged = 0;
    EXPECT_NEAR(MeasureFlowImbalance(net.Context, net.State), 0.003, 1e-9);
    EXPECT_EQ(net.State.NotConverged, 0);
    net.Model.UnitSystem = 1;
    MeasureFlowImbalance(net.Context, net.State);
    EXPECT_EQ(net.State.NotConverged, 1);
}

} // namespace
} // namespace quench
