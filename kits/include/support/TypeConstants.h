#pragma once

#include <SupportDefs.h>

/// The names of the kinds of data that messages and attributes hold.
constexpr type_code B_ANY_TYPE = 'ANYT'; // matches every kind where one is asked for
constexpr type_code B_BOOL_TYPE = 'BOOL';
constexpr type_code B_CHAR_TYPE = 'CHAR';
constexpr type_code B_COLOR_8_BIT_TYPE = 'CLRB';
constexpr type_code B_DOUBLE_TYPE = 'DBLE';
constexpr type_code B_FLOAT_TYPE = 'FLOT';
constexpr type_code B_GRAYSCALE_8_BIT_TYPE = 'GRYB';
constexpr type_code B_INT8_TYPE = 'BYTE';
constexpr type_code B_INT16_TYPE = 'SHRT';
constexpr type_code B_INT32_TYPE = 'LONG';
constexpr type_code B_INT64_TYPE = 'LLNG';
constexpr type_code B_MESSAGE_TYPE = 'MSGG';
constexpr type_code B_MESSENGER_TYPE = 'MSNG';
constexpr type_code B_MIME_TYPE = 'MIME';
constexpr type_code B_MONOCHROME_1_BIT_TYPE = 'MNOB';
constexpr type_code B_OBJECT_TYPE = 'OPTR';
constexpr type_code B_OFF_T_TYPE = 'OFFT';
constexpr type_code B_PATTERN_TYPE = 'PATN';
constexpr type_code B_POINTER_TYPE = 'PNTR';
constexpr type_code B_POINT_TYPE = 'BPNT';
constexpr type_code B_RAW_TYPE = 'RAWT';
constexpr type_code B_RECT_TYPE = 'RECT';
constexpr type_code B_REF_TYPE = 'RREF';
constexpr type_code B_RGB_32_BIT_TYPE = 'RGBB';
constexpr type_code B_RGB_COLOR_TYPE = 'RGBC';
constexpr type_code B_SIZE_T_TYPE = 'SIZT';
constexpr type_code B_SSIZE_T_TYPE = 'SSZT';
constexpr type_code B_STRING_TYPE = 'CSTR';
constexpr type_code B_TIME_TYPE = 'TIME';
constexpr type_code B_UINT8_TYPE = 'UBYT';
constexpr type_code B_UINT16_TYPE = 'USHT';
constexpr type_code B_UINT32_TYPE = 'ULNG';
constexpr type_code B_UINT64_TYPE = 'ULLG';
