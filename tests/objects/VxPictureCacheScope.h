#pragma once
// The picture cache keeps what it read until a drawing pass ends; a test
// that reads pictures ends as such a pass would.

#include "CVxPictureLoadCache.h"

class CPictureCacheScope
{
public:
    CPictureCacheScope() = default;
    CPictureCacheScope(const CPictureCacheScope&) = delete;
    CPictureCacheScope& operator=(const CPictureCacheScope&) = delete;
    ~CPictureCacheScope() { CVxPictureLoadCache::Clear(); }
};
