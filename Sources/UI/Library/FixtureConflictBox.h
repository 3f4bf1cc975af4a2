// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class OperatorBoxes;

// The questions about a fixture that differs from the library's fixture of the same product. The
// answers are those of FixtureConflictAnswer. A box closes by its buttons alone: neither Escape nor
// the frame's cross is an answer.

/// For a fixture that comes with a document or a file: take it, or keep the library's own.
[[nodiscard]] int AskAboutDocumentFixture(OperatorBoxes& boxes, const QString& manufacturer,
                                          const QString& product);

/// For the update from the fixtures of the program: overwrite, skip, or stop.
[[nodiscard]] int AskAboutLibraryUpdate(OperatorBoxes& boxes);
