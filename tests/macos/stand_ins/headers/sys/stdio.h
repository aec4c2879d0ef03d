#pragma once

constexpr unsigned RENAME_EXCL = 4;

extern "C" int renamex_np(const char* from, const char* to, unsigned flags);
