#pragma once

/// What the user asked for by the options that every command takes. Set once, before the command
/// runs.
namespace Option {

inline bool json = false;
inline bool yes = false; ///< every question is answered with yes
inline bool quiet = false;
inline bool verbose = false;

} // namespace Option
