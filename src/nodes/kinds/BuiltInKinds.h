#pragma once

namespace Nodes {

class KindTable;

/// Adds every kind of this library; one line each in the source file.
void AddBuiltInKinds(KindTable &table);

} // namespace Nodes
