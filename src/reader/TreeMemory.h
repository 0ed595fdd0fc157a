#pragma once
#include <cstddef>

namespace laminate {

/// Memory for the forms of trees. They are made one after another and die together, so blocks are cut from a stretch of
/// memory as they come and are never reused one by one: a stretch is used anew when all that was cut from it is free.
/// Any thread may free a block. Failure raises `CMemoryException`. Blocks are aligned to 8 bytes. Sanitizer builds take
/// every block from the heap, so that they see it.
void* TreeAllocate(std::size_t nBytes);
void TreeFree(void* p) noexcept;

}  // namespace laminate
