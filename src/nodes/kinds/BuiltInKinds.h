#pragma once

namespace Nodes {

class KindTable;

/// Adds every kind of this library, one line each in the source file, and its checks of projects.
/// The library provides itself to the table; nobody else needs to call this.
void AddBuiltInKinds(KindTable &table);

} // namespace Nodes
