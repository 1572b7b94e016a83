#pragma once

#include <QString>

/// What the user asked for by the options that every command takes. Set once, before the command
/// runs.
namespace Option {

inline bool json = false;
inline bool yes = false; ///< every question is answered with yes
inline bool quiet = false;
inline bool verbose = false;
inline bool noCard = false; ///< the phone has no memory card
inline QString card;        ///< the folder that is the card; empty where none is named

} // namespace Option
