#pragma once

#include <SupportDefs.h>

/// The names of the kinds of data that messages and attributes hold.
constexpr type_code B_ANY_TYPE = 'ANYT';             // matches every kind where one is asked for
constexpr type_code B_BOOL_TYPE = 'BOOL';            // bool
constexpr type_code B_CHAR_TYPE = 'CHAR';            // one byte of text
constexpr type_code B_COLOR_8_BIT_TYPE = 'CLRB';     // pixels of B_CMAP8
constexpr type_code B_DOUBLE_TYPE = 'DBLE';          // double
constexpr type_code B_FLOAT_TYPE = 'FLOT';           // float
constexpr type_code B_GRAYSCALE_8_BIT_TYPE = 'GRYB'; // pixels of one byte, from black to white
constexpr type_code B_INT8_TYPE = 'BYTE';            // int8
constexpr type_code B_INT16_TYPE = 'SHRT';           // int16
constexpr type_code B_INT32_TYPE = 'LONG';           // int32
constexpr type_code B_INT64_TYPE = 'LLNG';           // int64
constexpr type_code B_MESSAGE_TYPE = 'MSGG';         // a flattened BMessage
constexpr type_code B_MESSENGER_TYPE = 'MSNG';       // a BMessenger
constexpr type_code B_MIME_TYPE = 'MIME'; // bytes of the kind that the name, a MIME type, tells
constexpr type_code B_MONOCHROME_1_BIT_TYPE = 'MNOB'; // pixels of one bit
constexpr type_code B_OBJECT_TYPE = 'OPTR';           // a pointer to an object
constexpr type_code B_OFF_T_TYPE = 'OFFT';            // off_t
constexpr type_code B_PATTERN_TYPE = 'PATN';          // pattern
constexpr type_code B_POINTER_TYPE = 'PNTR';          // void*, good within one program
constexpr type_code B_POINT_TYPE = 'BPNT';            // BPoint
constexpr type_code B_RAW_TYPE = 'RAWT';              // bytes that say nothing of themselves
constexpr type_code B_RECT_TYPE = 'RECT';             // BRect
constexpr type_code B_REF_TYPE = 'RREF';              // entry_ref
constexpr type_code B_RGB_32_BIT_TYPE = 'RGBB';       // pixels of B_RGB32
constexpr type_code B_RGB_COLOR_TYPE = 'RGBC';        // rgb_color
constexpr type_code B_SIZE_T_TYPE = 'SIZT';           // size_t
constexpr type_code B_SSIZE_T_TYPE = 'SSZT';          // ssize_t
constexpr type_code B_STRING_TYPE = 'CSTR';           // a text with its closing zero
constexpr type_code B_TIME_TYPE = 'TIME';             // time_t
constexpr type_code B_UINT8_TYPE = 'UBYT';            // uint8
constexpr type_code B_UINT16_TYPE = 'USHT';           // uint16
constexpr type_code B_UINT32_TYPE = 'ULNG';           // uint32
constexpr type_code B_UINT64_TYPE = 'ULLG';           // uint64
