#pragma once

// The words of the tree and grid builders' messages and questions.

#include <string_view>

namespace quench::builder_words {

inline constexpr std::string_view InputDataErrorTitle = "Input Data Error";
inline constexpr std::string_view InputMissing = "There is some required input data missing.";
inline constexpr std::string_view TreeMaterial =
    "Tree pipe material must be a material number from 1 to 50.";
inline constexpr std::string_view GridMaterial =
    "Grid pipe material must be a material number from 1 to 50.";

inline constexpr std::string_view ConfirmPipeAddTitle = "Confirm Pipe Add";
inline constexpr std::string_view ConfirmTreePipeAdd =
    "There are existing pipes, do you want to add pipes created by Tree Builder to existing "
    "pipes? If you click Yes, Tree Builder created pipes will be added to existing pipes, if you "
    "click No, the program will delete existing pipes, or you can click cancel.";
inline constexpr std::string_view ConfirmGridPipeAdd =
    "There are existing pipes, do you want to add pipes created by Grid Builder to existing "
    "pipes? If you click Yes, Grid Builder created pipes will be added to existing pipes, if you "
    "click No, the program will delete existing pipes, or you can click cancel.";

// Boxes the builders show without a title of their own carry the program's.
inline constexpr std::string_view ProgramTitle = "QUENCH";
inline constexpr std::string_view SourceNodeExists =
    "Source node is the same as an existing node.  Please respecify source node.";
inline constexpr std::string_view NodeConflictTitle = "Possible node conflict";
inline constexpr std::string_view NodeConflict =
    "Source node number is less than some higher nodes, so some higher nodes may be duplicated in "
    "this new tree.  Are you sure you want to continue?";
inline constexpr std::string_view TreeNoRoom =
    "You can not add the number of pipe sections required for this tree as the maximum number of "
    "pipe sections for the current version is ";
inline constexpr std::string_view GridNoRoom =
    "You can not add the number of pipe sections required for this grid as the maximum number of "
    "pipe sections for the current version is ";
inline constexpr std::string_view DuplicateNodesTitle = "Add duplicate nodes?";
inline constexpr std::string_view DuplicateNodes =
    "Some new pipes will have the same node numbers as existing pipes!  This could create "
    "duplicated pipes.  Are you sure you want to add these pipes?";
// Node numbers end at 9999; a layout that would pass it is refused before anything is written.
inline constexpr std::string_view NodeNumbersTooHigh =
    "The node numbers of these pipes would pass 9999.  Please choose a lower source node number "
    "or numbering increment.";

} // namespace quench::builder_words
