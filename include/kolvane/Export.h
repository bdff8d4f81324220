#pragma once

/// Marks what libkolvane.so exports; everything else in it is hidden.
#define KOLVANE_EXPORT __attribute__((visibility("default")))
