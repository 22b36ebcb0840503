#pragma once

namespace trident {

// The two monitor dialects of the loader text.
enum class LoaderStyle { Sde, Ddt };

} // namespace trident
