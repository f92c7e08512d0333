#pragma once

namespace veldra {

/// Leaves each face of the system in one file: where several files have a face of the same family,
/// weight, slant and width, the one that FontBook takes stays and the others are no longer offered
/// in this process. Picture and documents ask the same configuration in their own ways, and so come
/// to the same file. To be called once, before the toolkit reads the fonts and before other threads
/// begin.
void keep_one_file_of_each_face();

}  // namespace veldra
