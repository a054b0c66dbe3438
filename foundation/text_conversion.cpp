// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: conversion of zero-terminated texts.

#include <sigildesk/convert_utf8.h>
#include <sigildesk/util.h>

#include <cstring>

namespace {

using Conversion = int (ConvertUTF8::*)(const char* in, int len, char* out, int& outLen);

int convert(Conversion conversion, const char* in, char* out, int* outLen)
{
    if (!in || !out || !outLen)
        return -1;
    ConvertUTF8 converter;
    return (converter.*conversion)(in, static_cast<int>(std::strlen(in)), out, *outLen);
}

} // namespace

// The name promises the opposite direction; callers depend on what it does.
int CUtil::UTF8ToMultibyte(char* in, char* out, int* outLen)
{
    return convert(&ConvertUTF8::ascii2utf8, in, out, outLen);
}

int CUtil::MultibyteToWideData(char* in, char* out, int* outLen)
{
    return convert(&ConvertUTF8::ascii2utf8, in, out, outLen);
}

int CUtil::WideDataToMultibyte(char* in, char* out, int* outLen)
{
    return convert(&ConvertUTF8::utf82ascii, in, out, outLen);
}
