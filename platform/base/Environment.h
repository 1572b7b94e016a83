#pragma once

/// Remembers the environment that the program was given, before it changes any of it.
void rememberEnvironment();

/// What was remembered, else what is there now, in the form of `environ`. It stays valid until the
/// next `rememberEnvironment`.
char** givenEnvironment();
