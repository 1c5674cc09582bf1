// RastGL.dll: the graphics library of the workbench, as plain C functions.
//
// Conventions that hold for every function:
//  - A picture handle is a positive 32-bit number that names a picture held by the library; 0 is no picture.
//    Whoever makes a handle frees it with VTGF_DIB_Free. A handle that names nothing gives 0 or does nothing.
//  - "Pixels" are 32-bit, bytes in the order B, G, R, A, alpha not premultiplied, bottom row first, with a
//    pitch of exactly width * 4 bytes. Where rows come top row first, the function says so.
//  - Sizes and counts go by reference where the interface has always had them so; they are only read.
//  - Sizes must describe the buffers truly: the library trusts its caller, but never a file.
//  - An empty picture (width or height not above 0) is no error: the function does nothing.
//  - Paths are the machine's own, as platform/fileio.h takes them.
//  - No function throws. The library keeps no state between calls but the pictures behind live handles.
#pragma once

#include <stdint.h>

#ifdef _WIN32
#define RASTGL_API extern "C" __declspec(dllexport)
#else
#define RASTGL_API extern "C" __attribute__((visibility("default")))
#endif

// What drawing goes onto: 32-bit B, G, R, X pixels, top row first; pitch in bytes. The X byte is set to 255.
struct RastGlSurface {
    uint8_t *pixels;
    int32_t width;
    int32_t height;
    int32_t pitch;
};

// --- Pictures

// Decodes a whole file held in memory; gives a new handle, or 0 when the data can't be read. A file that
// breaks off is decoded as far as it goes where its format allows. The handle keeps the source's kind of
// depth: 32 bits per pixel when the source has an alpha channel (or other transparency), else 24. Pictures
// above 268,435,456 pixels give 0.
//   PNG:  Portable Network Graphics (ISO/IEC 15948): every colour type, depth and interlace, tRNS.
//   BMP:  Windows and OS/2 bitmaps: 1 to 32 bits, RLE4, RLE8, bit fields, either row order.
//   JPEG: ITU-T T.81 baseline and progressive: grey, YCC, RGB, CMYK and YCCK.
//   PSD:  Adobe Photoshop File Formats Specification: the merged picture; bitmap, grey, indexed, RGB, CMYK;
//         8 and 16 bits a channel; raw and RLE; alpha where the merged picture has it.
//   DDS:  DirectDraw Surface: uncompressed 16, 24 and 32 bits by masks, DXT1, DXT3, DXT5; the top mip level.
RASTGL_API int32_t VTGF_Read_PNG(const uint8_t *data, const int32_t *length);
RASTGL_API int32_t VTGF_Read_BMP(const uint8_t *data, const int32_t *length);
RASTGL_API int32_t VTGF_Read_JPEG(const uint8_t *data, const int32_t *length);
RASTGL_API int32_t VTGF_Read_PSD(const uint8_t *data, const int32_t *length);
RASTGL_API int32_t VTGF_Read_DDS(const uint8_t *data, const int32_t *length);

// As VTGF_Read_PNG, from a file; 0 when it can't be opened.
RASTGL_API int32_t VTGF_Read_PNG_File(const char *path);

// A new picture holding a copy of the pixels; bitsPerPixel is 32. 0 for an empty picture.
RASTGL_API int32_t VTGF_Read_Buf(const uint8_t *pixels, const int32_t *width, const int32_t *height,
                                 const int32_t *bitsPerPixel);

RASTGL_API int32_t VTGF_DIB_GetWidth(int32_t handle);
RASTGL_API int32_t VTGF_DIB_GetHeight(int32_t handle);
RASTGL_API int32_t VTGF_DIB_GetBPP(int32_t handle);

// Transparency class: 0 every pixel opaque (also for no picture), 1 every pixel opaque or fully transparent,
// 2 some pixel partly transparent.
RASTGL_API int32_t VTGF_DIB_GetTransType(int32_t handle);

// Copies the picture into `destination`, which holds *byteCount = width * height * 4 bytes; another count
// copies nothing.
RASTGL_API void VTGF_DIB_CopyBuf(uint8_t *destination, const int32_t *byteCount, int32_t handle);

RASTGL_API void VTGF_DIB_Free(int32_t handle);

// Writes the picture to `path`. 1 when the file is complete; else 0, with an older file as it was and no part
// of the new one. PNG keeps 24-bit pictures without and 32-bit ones with alpha. JPEG
// takes a quality of 0 to 100 (larger values count as 100) and composes transparent areas over black.
RASTGL_API int32_t VTGF_Write_PNG_File(const char *path, int32_t handle);
RASTGL_API int32_t VTGF_Write_JPEG_File(const char *path, int32_t handle, const int32_t *quality);

// Draws a picture, or a buffer of pixels, with its top-left corner at (x, y) of the surface, clipped to it,
// composed over backColor (red in the low byte, then green, then blue) where it is transparent. The GDI form
// leaves what the surface holds where the buffer is transparent.
RASTGL_API void VTGF_DIB_DrawFast(const RastGlSurface *surface, int32_t x, int32_t y, int32_t handle,
                                  int32_t backColor);
RASTGL_API void VTGF_DrawBuf_Fast_32(const RastGlSurface *surface, int32_t x, int32_t y,
                                     const uint8_t *pixels, const int32_t *width, const int32_t *height,
                                     int32_t backColor);
RASTGL_API void VTGF_DrawBufGDI_32(const RastGlSurface *surface, int32_t x, int32_t y, const uint8_t *pixels,
                                   const int32_t *width, const int32_t *height);

// --- Buffers

// The three layers that a GI splits a picture into; pixels of other layers become 0. Both counts are the
// bytes of target and source; the smaller one is what is copied. Opaque: alpha 255. The other two: alpha 1 to
// 254.
RASTGL_API void VTGF_TransBuf_Copy_32(uint8_t *target, const int32_t *targetBytes, const uint8_t *source,
                                      const int32_t *sourceBytes);
RASTGL_API void VTGF_TransAlphaBuf_Copy_32(uint8_t *target, const int32_t *targetBytes, const uint8_t *source,
                                           const int32_t *sourceBytes);
RASTGL_API void VTGF_AlphaBuf_Copy_32(uint8_t *target, const int32_t *targetBytes, const uint8_t *source,
                                      const int32_t *sourceBytes);

// target = source with its rows in reverse order; the buffers do not overlap.
RASTGL_API void VTGF_VFlipBuf_Copy_32(uint8_t *target, const uint8_t *source, const int32_t *width,
                                      const int32_t *height);

// Copies the part of source from (sourceX, sourceY) on to (targetX, targetY) of target, as far as both reach.
// Coordinates count columns from the left and rows from the top of the picture; they may be negative. The
// Flip form takes a source whose rows lie top row first.
RASTGL_API void VTGF_CopyClip_32(uint8_t *target, const int32_t *targetX, const int32_t *targetY,
                                 const int32_t *targetWidth, const int32_t *targetHeight,
                                 const uint8_t *source, const int32_t *sourceX, const int32_t *sourceY,
                                 const int32_t *sourceWidth, const int32_t *sourceHeight);
RASTGL_API void VTGF_CopyClip_Flip_32(uint8_t *target, const int32_t *targetX, const int32_t *targetY,
                                      const int32_t *targetWidth, const int32_t *targetHeight,
                                      const uint8_t *source, const int32_t *sourceX, const int32_t *sourceY,
                                      const int32_t *sourceWidth, const int32_t *sourceHeight);

// Bounds of the pixels whose alpha is not 0: first column or row (counted from the top) that holds one, and
// one past the last. Start = Finish = 0 when there is none.
RASTGL_API int32_t VTGF_GetStartX_32(const uint8_t *pixels, const int32_t *width, const int32_t *height);
RASTGL_API int32_t VTGF_GetStartY_32(const uint8_t *pixels, const int32_t *width, const int32_t *height);
RASTGL_API int32_t VTGF_GetFinishX_32(const uint8_t *pixels, const int32_t *width, const int32_t *height);
RASTGL_API int32_t VTGF_GetFinishY_32(const uint8_t *pixels, const int32_t *width, const int32_t *height);

// Reduces a picture to at most 256 colours: `indexes` gets width * height bytes, top row first; `palette`
// gets 256 entries R, G, B, A. Index 0 is the empty pixel (alpha 0); no pixel with alpha above 0 gets it.
// Exact when 255 colours suffice. The same input always gives the same output.
RASTGL_API void VTGF_RGBAtoIndexed8(uint8_t *indexes, uint8_t *palette, const uint8_t *pixels,
                                    const int32_t *width, const int32_t *height);

// The inverse: expands indexes (top row first) through a palette of 256 entries R, G, B, A into pixels.
RASTGL_API void VTGF_AlphaSimpleBufPalAlpha_Copy_32(uint8_t *pixels, const uint8_t *indexes,
                                                    const uint8_t *palette, const int32_t *width,
                                                    const int32_t *height);

// 5-6-5 planes (u16, little-endian, top row first) to pixels with alpha 255, and back; the alpha is dropped
// on the way back. Widening repeats the high bits below; packing undoes it exactly.
RASTGL_API void VTGF_Convert565toRGBA(uint8_t *pixels, const uint8_t *plane, const int32_t *width,
                                      const int32_t *height);
RASTGL_API void VTGF_ConvertRGBAto565(uint8_t *plane, const uint8_t *pixels, const int32_t *width,
                                      const int32_t *height);

// Scales pixels to another size: area averaging where it shrinks, smooth interpolation where it grows;
// colours are weighted by their alpha.
RASTGL_API void VTGF_Rescale(uint8_t *target, const int32_t *targetWidth, const int32_t *targetHeight,
                             const uint8_t *source, const int32_t *sourceWidth, const int32_t *sourceHeight);

// target = the pixels of current where they differ from previous, else 0. Two fully transparent pixels are
// equal whatever their colour bytes. Gives the number of pixels that drawing target over previous does not
// turn into those of current: they differ and are transparent, fully or in part, where previous is not empty.
RASTGL_API int32_t VTGF_AnimFrame_Build_32(uint8_t *target, const uint8_t *previous, const uint8_t *current,
                                           const int32_t *width, const int32_t *height);

// --- GI layers

// Each draws one run-coded layer (rowrle.h gives its layout) whose first pixel lies at `destination`; `pitch`
// is the step in bytes from one row of the picture to the next lower one, negative for bottom row first. The
// layer's own header says its width, height and how many bytes of coded rows follow: nothing beyond those
// bytes is read and no pixel beyond width and height is touched, whatever the rows hold. Only coded pixels
// change.
//
//   TransBuf        16-bit premultiplied 5-6-5 colours, drawn opaque.
//   AlphaBuf        transparency bytes: lays their alpha, without colour, source-over onto what is there.
//   TransAlphaBuf   16-bit premultiplied 5-6-5 colours of the pixels that AlphaBuf has laid: adds them.
//   AlphaIndexed    palette indexes; Draw with a 5-6-5 palette, opaque; AlphaDraw with a palette of 5-6-5
//                   colour and transparency byte, source-over; AlphaCopy does what AlphaDraw does to pixels
//                   that are all zero, without a look at them.
//   F5, F6          no layout is known; they draw nothing.
RASTGL_API void VTGR_TransBuf_DrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer);
RASTGL_API void VTGR_TransAlphaBuf_DrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer);
RASTGL_API void VTGR_AlphaBuf_Draw_RGBA(uint8_t *destination, int32_t pitch, const uint8_t *layer);
RASTGL_API void VTGR_AlphaIndexed_DrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer);
RASTGL_API void VTGR_AlphaIndexed_AlphaDrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer);
RASTGL_API void VTGR_AlphaIndexed_AlphaCopyRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer);
RASTGL_API void VTGR_F5_DrawRGBA(uint8_t *destination, int32_t pitch, const uint8_t *layer);
RASTGL_API void VTGR_F6_DrawRGBA(uint8_t *destination, int32_t pitch, const uint8_t *layer);

// --- ZL blocks
//
// A block is a tag, the unpacked length (signed 32-bit, little-endian) and a zlib stream (RFC 1950).

// Writes the block "ZL01" (Compress) or "ZL02" (Compress2) of the source and gives the length of its stream,
// which begins 8 bytes behind `target`; 0 when it does not fit. `capacity` counts all bytes of the target;
// Compress2's has room for 20 bytes and 1 % more than the source.
RASTGL_API int32_t VTGF_ZLib_Compress(uint8_t *target, const int32_t *capacity, const uint8_t *source,
                                      const int32_t *length);
RASTGL_API int32_t VTGF_ZLib_Compress2(uint8_t *target, const uint8_t *source, const int32_t *length);

// Expands the stream of the block into at most `capacity` bytes and gives their number. Tag and unpacked
// length are not looked at; bytes behind the stream do no harm. A damaged stream, and one that holds more
// or nothing, give 0: the target then has what came out before, and zeroes up to its capacity.
RASTGL_API int32_t VTGF_ZLib_UnCompress(uint8_t *target, const int32_t *capacity, const uint8_t *block,
                                        const int32_t *length);
RASTGL_API int32_t VTGF_ZLib_UnCompress2(uint8_t *target, const int32_t *capacity, const uint8_t *block,
                                         const int32_t *length);

// The names of all functions above, for the one place that resolves them.
#define RASTGL_FUNCTIONS(X)                                                                                  \
    X(VTGF_Read_PNG)                                                                                         \
    X(VTGF_Read_BMP)                                                                                         \
    X(VTGF_Read_JPEG)                                                                                        \
    X(VTGF_Read_PSD)                                                                                         \
    X(VTGF_Read_DDS)                                                                                         \
    X(VTGF_Read_PNG_File)                                                                                    \
    X(VTGF_Read_Buf)                                                                                         \
    X(VTGF_DIB_GetWidth)                                                                                     \
    X(VTGF_DIB_GetHeight)                                                                                    \
    X(VTGF_DIB_GetBPP)                                                                                       \
    X(VTGF_DIB_GetTransType)                                                                                 \
    X(VTGF_DIB_CopyBuf)                                                                                      \
    X(VTGF_DIB_Free)                                                                                         \
    X(VTGF_Write_PNG_File)                                                                                   \
    X(VTGF_Write_JPEG_File)                                                                                  \
    X(VTGF_DIB_DrawFast)                                                                                     \
    X(VTGF_DrawBuf_Fast_32)                                                                                  \
    X(VTGF_DrawBufGDI_32)                                                                                    \
    X(VTGF_TransBuf_Copy_32)                                                                                 \
    X(VTGF_TransAlphaBuf_Copy_32)                                                                            \
    X(VTGF_AlphaBuf_Copy_32)                                                                                 \
    X(VTGF_VFlipBuf_Copy_32)                                                                                 \
    X(VTGF_CopyClip_32)                                                                                      \
    X(VTGF_CopyClip_Flip_32)                                                                                 \
    X(VTGF_GetStartX_32)                                                                                     \
    X(VTGF_GetStartY_32)                                                                                     \
    X(VTGF_GetFinishX_32)                                                                                    \
    X(VTGF_GetFinishY_32)                                                                                    \
    X(VTGF_RGBAtoIndexed8)                                                                                   \
    X(VTGF_AlphaSimpleBufPalAlpha_Copy_32)                                                                   \
    X(VTGF_Convert565toRGBA)                                                                                 \
    X(VTGF_ConvertRGBAto565)                                                                                 \
    X(VTGF_Rescale)                                                                                          \
    X(VTGF_AnimFrame_Build_32)                                                                               \
    X(VTGR_TransBuf_DrawRGBA_16)                                                                             \
    X(VTGR_TransAlphaBuf_DrawRGBA_16)                                                                        \
    X(VTGR_AlphaBuf_Draw_RGBA)                                                                               \
    X(VTGR_AlphaIndexed_DrawRGBA_16)                                                                         \
    X(VTGR_AlphaIndexed_AlphaDrawRGBA_16)                                                                    \
    X(VTGR_AlphaIndexed_AlphaCopyRGBA_16)                                                                    \
    X(VTGR_F5_DrawRGBA)                                                                                      \
    X(VTGR_F6_DrawRGBA)                                                                                      \
    X(VTGF_ZLib_Compress)                                                                                    \
    X(VTGF_ZLib_Compress2)                                                                                   \
    X(VTGF_ZLib_UnCompress)                                                                                  \
    X(VTGF_ZLib_UnCompress2)
