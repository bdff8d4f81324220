#ifndef KOLVANE_DEVLNK_H
#define KOLVANE_DEVLNK_H

/* The port library's C interface. Every function returns a signed 32-bit status, negative = failure
   (status.h); texts are 8-bit strings ended by NUL. One port is open at a time; nothing here is safe for
   several threads. */

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define KOLVANE_DEVLNK_EXPORT __attribute__((visibility("default")))

/* port: 1, 2 COM; 10, 20 RS485; 90, 91 LPT; 100 TCP/IP; 200 USB; 488 GPIB. text: parity letter (serial), host
   name or address (TCP/IP), serial number (USB). data_bits: the IP port for TCP/IP, where values below 0
   stand for 65536 more (a 16-bit port number that was kept with a sign). baud: the mode for LPT.
   receive_buffer: bytes. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_OpenPort(int16_t port, int32_t baud, const char* text, int32_t data_bits,
                                           int16_t stop_bits, int16_t receive_buffer);
/* Chooses the bus address that the following transfers speak to. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SelectDevice(int16_t address);
/* Time-out of the following transfers in all, not for each byte. Also holds for opening TCP/IP when called
 * before. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetTimeout(int32_t milliseconds);
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetGPIBCtrlBlock(int16_t eoi_on_write, int16_t stop_read_on_eos,
                                                   int16_t eoi_with_eos, int16_t eos_char, int16_t zero,
                                                   int16_t repeat_addressing, int32_t milliseconds);
KOLVANE_DEVLNK_EXPORT int32_t QDX_EnableNTPortIO(int16_t port);
KOLVANE_DEVLNK_EXPORT int32_t QDX_WritePort(const char* text);
/* Receives up to count bytes over the start of buffer and leaves the rest of it as it was. terminator 0:
   returns when count bytes are there. Otherwise: returns when that byte has arrived or count bytes are there;
   a terminator byte standing alone is taken off, the LF of a CR LF pair is handed over with its CR. A
   time-out is a failure; the bytes that came before it stay queued for the next read or flush. first and
   second may be null. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_ReadPort(char* buffer, int32_t count, int32_t* first, int32_t* second,
                                           int16_t terminator);
/* Discards what has been received and not read; returns the number of bytes. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_FlushInQueue(void);
KOLVANE_DEVLNK_EXPORT int32_t QDX_ActivateInterpreter(int16_t value);
KOLVANE_DEVLNK_EXPORT int32_t QDX_CloseInterpreterEx(int16_t port, int16_t value);
KOLVANE_DEVLNK_EXPORT int32_t QDX_ClosePort(void);
/* Returns after that many milliseconds; needs no open port. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_Delay(int32_t milliseconds);
/* Number of device slots that a scan can fill. */
KOLVANE_DEVLNK_EXPORT int32_t USB_GetMaxUsbDevice(void);
/* Fills slots records of 510 characters: serial number in the first 255, description in the next 255, blanks
 * behind. */
KOLVANE_DEVLNK_EXPORT int32_t USB_ScanUsbDevice(int32_t slots, char* buffer);

#ifdef __cplusplus
}
#endif

#endif
