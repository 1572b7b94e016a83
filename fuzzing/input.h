#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <cstddef>
#include <cstdint>

/// A fuzzer's input as `count` pieces, with a "|" between them; the last one may hold more of them,
/// pieces that are missing are empty.
QList<QByteArray> pieces(const uint8_t* data, size_t size, qsizetype count);

/// The next line of `text`, which loses it.
QByteArrayView takeLine(QByteArrayView& text);

/// Ends the process, which the fuzzer takes as a find, where `holds` is false.
void require(bool holds, const char* what);

/// What the fuzzer calls with each input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
