// Error handling that reader and writer of JPEG share.
#pragma once

#include "rastgl/jump.h"

#include <cstdio>

#include <jpeglib.h>

namespace rastgl
{

// Jumps out of libjpeg at an error and keeps it from printing.
struct JpegErrors : jpeg_error_mgr {
    std::jmp_buf jump;

    JpegErrors() : jpeg_error_mgr{}
    {
        jpeg_std_error(this);
        error_exit = &Exit;
        output_message = [](j_common_ptr) {};
    }

    [[noreturn]] static void Exit(j_common_ptr info)
    {
        std::longjmp(static_cast<JpegErrors *>(info->err)->jump, 1);
    }
};

} // namespace rastgl
