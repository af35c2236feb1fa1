#pragma once

namespace Nodes {

/// Storage type of a property; the value inside its boost::any has the C++ type named.
enum class PropertyType {
    Bool,     ///< bool
    Int,      ///< int
    UInt,     ///< unsigned
    Double,   ///< double
    String,   ///< std::string
    Color,    ///< NColor
    Link,     ///< NodeLink
    Links,    ///< NodeLinks
    Resource, ///< ResourceLink
    Secret    ///< std::string, never shown: a hash or a token, not a clear password
};

} // namespace Nodes
