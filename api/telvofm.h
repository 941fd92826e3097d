/**
 * @file telvofm.h
 * TelvoFM: drives a fiscal cash-register printer over a serial port or TCP.
 *
 * @code{.c}
 *     openFM("192.168.1.10:9100");
 *     sellingDayBegin(1, 0);
 *     paragonBegin(1, 0, 1, 0, 0, 1, 0);
 *     itemSale(1, 0, "Chlieb", 12.50, 'A', 1.5, 8.33, "ks");
 *     payment(1, 0, 1, 12.50, 12.50, 0, "Hotovost");
 *     paragonEnd(1, 0, 0);
 *     closeFM();
 * @endcode
 *
 * What holds for all functions stands first, in three chapters: what goes in, what comes back, and how
 * replies reach the caller. The functions say only what is their own, and name these words.
 */

/**
 * @defgroup conventions What goes in
 *
 * - **One printer at a time.** The open functions connect; every other function works on the connected
 *   printer.
 * - **One call, one exchange.** The library keeps no receipt and no totals, and checks almost no argument:
 *   values go to the printer, which judges them.
 * - **The printer's.** A number, letter or form that is called the printer's is sent as given, any `int` in
 *   decimal and any character as its byte; what it means, and which are allowed, only the manual of the
 *   printer says.
 * - **`device`** is the printer's address. Only its low byte is sent; the call log shows the whole number.
 * - **Texts** are NUL-terminated byte strings in Windows-1250, of any length, and may be empty; null counts
 *   as empty. A call copies its texts when it begins. No text is cut but the unit of an item (3 bytes) and
 *   the description of a payment (10 bytes); bytes are those of the caller's text, one a character in
 *   Windows-1250.
 * - **Converted** texts go out in code page 852 on serial links, character by character, and as they are on
 *   TCP links. Characters that code page 852 lacks go out as they are. Texts that go out **byte for byte**
 *   are never converted.
 * - **Single characters** are a `char` in some functions; where they are a text, its first character counts
 *   and is logged, and an empty text sends the byte 0x00. A `char` is never converted.
 * - **Amounts** come in up to three forms. The plain functions take `double`, sent with the stated number of
 *   decimals, rounded from its exact binary value to the nearest; what is no number is sent as `nan` or
 *   `inf`. The `_int` functions take whole numbers in fixed units: money in hundredths (so up to
 *   21,474,836.47), quantities in thousandths, unit prices and exchange rates in ten-thousandths. The `_str`
 *   functions take text, sent unchanged.
 * - **Dates** are texts in the printer's form. The virtual printer takes `2026-01-31` and `31.01.2026`, with
 *   or without ` 12:00`, and an empty text for no bound; a real printer has a form of its own.
 * - **A `bool`** is one byte: 0 is false, and any other value that a host language has for true is true.
 * - **Threads.** Functions may be called from several threads; each exchange is whole, and a second caller
 *   waits.
 * - **The call log** gets one line per call before anything is sent, unless it is off or the function says
 *   otherwise; see @ref calllog. "Not logged" is meant of this log.
 *
 * The spellings of some names are unusual; they are part of the interface.
 */

/**
 * @defgroup codes What comes back
 *
 * Most functions return 0 or the code of a failure. docs/codes.md says of each code whether the call was
 * carried out and what to do.
 *
 * | code | what happened |
 * |---|---|
 * | 0 | done; also a refusal whose error byte is 0: nothing is carried out then, and nothing delivered |
 * | 1 ... 255 | the printer's own error code; only its manual says what it means |
 * | 64 | also: serial, the printer is silent for 15 s although it holds clear-to-send on |
 * | -1 | no printer is open, or the result object is null; from an open function: it could not be opened |
 * | -10000 | a run-time failure inside the exchange, memory exhaustion above all |
 * | -10001 | serial: an uploaded block was refused three times; TCP: a run-time failure in a command |
 * | -10002 | a reply was damaged three times, or a byte came that the protocol does not allow there |
 * | -10103 | serial: port not open, clear-to-send off when a write begins, or ended by closeFM() |
 * | -10104 | the bitmap file is not monochrome |
 * | -10200 | serial: the port reported error 2 |
 * | -10201 | any other failure of the link or of a file; TCP: connection closed, or ended by closeFM() |
 * | -10202 | TCP: the printer did not answer in time |
 *
 * Which of them a function returns depends on its exchange and on the link. All may return 0 ... 255 and -1,
 * and beside these
 *
 * | | over TCP | on a serial link |
 * |---|---|---|
 * | **a command's code** | -10001, -10002, -10201, -10202 | -10000, -10103, -10200, -10201 |
 * | **a reply's code** | -10000, -10002, -10201, -10202 | -10000, -10002, -10103, -10200, -10201 |
 * | **a file's code** | a reply's; -10201 also for the file | a reply's; -10201 also for the file |
 * | **an upload's code** | a command's, or -10000 | a command's, or -10001 |
 *
 * After a failure the session stays open and the next call may succeed; over TCP -10201 mostly means that the
 * connection is gone: close and open again. Over TCP a call that meets silence is sent again, so that it may
 * be carried out twice although it returns 0.
 *
 * No exception of the library's own leaves it. Memory that runs out before an exchange begins (for the copy
 * of a long text, the line of the call log, the request), or between the command of an upload and its blocks,
 * leaves a function as `std::bad_alloc`, and no C program can catch it; the open functions return -1 then,
 * createResultObject() null and getVariableStr() `Error`.
 */

/**
 * @defgroup replies How replies reach the caller
 *
 * A reply is what the printer says, byte for byte on TCP links, converted back to Windows-1250 on serial
 * ones; it may contain 0x00. After a failure, or a refusal with the error byte 0, buffers, counts and result
 * objects are as they were. A result of 0 does not say that a reply is whole: after a damaged block a printer
 * may end it instead of sending the block again, and what came before is delivered, which may be nothing. A
 * reply goes
 *
 * - **into a buffer, exactly**: the reply's bytes without a terminator; an empty reply leaves the buffer as
 *   it was;
 * - **into a buffer, as text**: up to its first 0x00, with a terminating NUL;
 * - **into a result object**: whatever its length, in place of what the object held;
 * - **into a file**: the reply's bytes and nothing else; the file is created or emptied.
 *
 * **A buffer that is too short ends the process.** It is filled with 0x00 (as text: emptied), and then the C
 * runtime's invalid-parameter failure is raised: on Windows that of the universal C runtime, whose handler a
 * program may replace; on Linux one line on standard error and abort(). A result object has no such limit.
 * getJournalStructD() and getLastParagon() deliver in ways of their own.
 *
 * Memory that a function returns stays the library's, but for result objects, which the caller destroys.
 */
#ifndef TELVOFM_H
#define TELVOFM_H

#include <stdbool.h>
#include <stdint.h>

#if UINTPTR_MAX < UINT64_MAX
#error "TelvoFM is a 64-bit library: compile this program for a 64-bit target"
#endif

/** The version of this library; getVersion() returns another number, that of the interface. */
#define TELVOFM_VERSION "1.0.0"
/** Its first number. */
#define TELVOFM_VERSION_MAJOR 1
/** Its second number. */
#define TELVOFM_VERSION_MINOR 0
/** Its third number. */
#define TELVOFM_VERSION_PATCH 0

#ifndef TELVOFM_API
#if defined(_WIN32)
#if defined(TELVOFM_BUILDING)
#define TELVOFM_API
#else
#define TELVOFM_API __declspec(dllimport)
#endif
#else
/** How the functions are declared; a program that needs another way defines it before this header. */
#define TELVOFM_API __attribute__((visibility("default")))
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** A byte string of any length that the library fills and the caller reads; see @ref results. */
typedef struct ResultObject ResultObject;

#if defined(TELVOFM_BUILDING)
/* What a compiler knows to be a bool it takes to be 0 or 1; callers in other languages pass other bytes. */
typedef unsigned char TelvofmBool;
#else
/** A truth value as an argument: one byte, 0 for false and any other for true. */
typedef bool TelvofmBool;
#endif

/**
 * @defgroup session Session
 * @{
 *
 * Opening and closing the link, and the bytes on it.
 *
 * The open functions know two kinds of names. One that begins with `COM`, or with two backslashes, a point,
 * another backslash and `COM`, is a serial port, in this case of letters; what follows is not looked at. On
 * POSIX systems `COM` and a number n is `/dev/ttyS` and n - 1, and `COM` followed by an absolute path is that
 * path. Any other name is a host, or a host and a port joined by a colon; without a port it is 64000.
 *
 * After a failed open closeFM() is still due. A second open without closeFM() leaves the first connection
 * open and out of reach; only the same serial port, under any of its names, is closed first.
 */

/**
 * The version of this interface, whether a printer is open or not. Not logged.
 * @return 106, always
 */
TELVOFM_API int getVersion(void);

/**
 * Connects to the printer, over TCP or on a serial port: 57600 baud, 8 data bits, no parity, one stop bit.
 * For a TCP link it writes "host: ... port: ..." to standard output, and takes as long as the system lets a
 * connection take.
 * @param portName  a serial port, a host, or a host and a port: `COM3`, `192.168.1.10:9100`
 * @return 0, or -1 when the connection could not be made
 */
TELVOFM_API int openFM(const char* portName);

/**
 * Opens a serial port as openFM() does, with another speed. With a speed that it does not know no port is
 * opened: a new session begins on the link that is already held, whatever the name says, and without one the
 * result is -1. Logged under the name of openFM, without the speed.
 * @param portName  a serial port; with any other name the result is -1 and nothing is opened
 * @param baud      57600 or 115200
 * @return 0, or -1 when the port could not be opened
 */
TELVOFM_API int openFMBaud(const char* portName, uint32_t baud);

/**
 * Opens a serial port as openFM() does, with other stop bits.
 * @param portName  a serial port; with any other name the result is -1 and nothing is opened
 * @param stopBits  1, 2, or 15 for one and a half, which Windows' drivers refuse with 8 data bits (-1) and
 *                  for which Linux sends two; any other number means 1
 * @return 0, or -1 when the port could not be opened
 */
TELVOFM_API int openFMStopBit(const char* portName, uint32_t stopBits);

/**
 * Closes the connection and forgets the session's settings and pictures; nothing happens when none is open.
 * Calls of other threads that wait for the printer end with the step that they wait in (3 s over TCP, 15 s on
 * serial links) and return -10201, on serial links -10103; an opening whose host name is being resolved is
 * waited for. It is due before the library is unloaded: unloading alone leaves the connection open until the
 * program ends.
 */
TELVOFM_API void closeFM(void);

/**
 * Stores a time with the current link, which no exchange reads: nothing changes. Not logged.
 * @param timeoutMs  milliseconds, any number
 */
TELVOFM_API void setTcpTimeout(int64_t timeoutMs);

/**
 * Reads bytes as they come from the printer, until nothing more comes in time: on TCP each byte may take 3 s
 * and, after a probe, 3 s more; on serial links only bytes already received are taken. It does not wait for
 * an exchange of another thread to end. Not logged.
 * @param buffer  gets the bytes; null gives -1
 * @param count   how many bytes at most; with 0 or less nothing is read
 * @param marker  any pointer but null, which is not looked at; with null nothing is read and the result is 0
 * @return the number of bytes read, 0 to `count`, or -1 on a failure and without a link
 */
TELVOFM_API int64_t rawRead(unsigned char* buffer, int64_t count, const void* marker);

/**
 * Writes bytes to the printer as they are, without a checksum byte and without waiting for an answer. It does
 * not wait for an exchange of another thread to end. Not logged.
 * @param bytes  what to write; null gives -1
 * @param count  their number; a negative one gives -1
 * @return `count`, or -1 on a failure, when a part may have gone out, and without a link
 */
TELVOFM_API int64_t rawWrite(const unsigned char* bytes, int64_t count);

/**
 * Sends a request that the caller has built, and waits for the printer's acceptance. The library adds the
 * checksum byte. Only requests without fields can be sent this way, because every field ends with 0x00.
 * @param data  the request from 0x1C to 0x04, up to its terminating NUL; byte for byte, also the printer's
 *              address
 * @return a command's code, 0 when done
 */
TELVOFM_API int sendUnspecifiedData(const char* data);

/** @} */

/**
 * @defgroup calllog Call log
 * @{
 *
 * A file with one line per call, for the technician who wants to know what the till did. It is on from the
 * moment that the library is loaded, and writes to `fmlog.txt` in the current directory. The file grows
 * without limit; nothing rotates it. It is opened, appended to and closed for every line; one that cannot be
 * written loses its lines without any other effect.
 *
 * A line holds the function's name and its arguments and is written before anything is sent, so it tells
 * neither outcome nor time. Texts stand there as the caller gave them, in Windows-1250, whole also where less
 * is sent. `double` amounts have six significant digits (1234567.0 is 1.23457e+06), and those of the `_int`
 * functions stand there divided by their unit. Passwords appear as `*****`, unless the function says that
 * they are logged in clear. The functions say where they differ; the spellings of some lines are old, and
 * readers of old logs search for them.
 *
 * Both settings are the library's, for all threads and sessions, and outlive closeFM().
 */

/**
 * Switches the call log on with another file, which is not opened before the next line. Not logged.
 * @param path  the file, in the encoding of the system's narrow file names; an empty one loses all lines
 */
TELVOFM_API void setLogginOn(const char* path);

/** Switches the call log off. Not logged. */
TELVOFM_API void setLogginOff(void);

/** @} */

/**
 * @defgroup results Result objects
 * @{
 *
 * A result object is a byte string of any length that the library fills and the caller reads. The functions
 * whose names end in ResultObject fill it: what it held is replaced, never appended to, and after any
 * failure, or a refusal with the error byte 0, it is as it was. The caller owns the object from
 * createResultObject() to destroyResultObject(); its memory is the library's and never freed any other way.
 * One object must not be used by two threads at once.
 */

/**
 * Makes an empty result object. Not logged.
 * @return the object, which the caller destroys, or null when memory runs out
 */
TELVOFM_API ResultObject* createResultObject(void);

/**
 * Destroys a result object. Not logged.
 * @param object  the object, which must not be used afterwards; null is ignored
 */
TELVOFM_API void destroyResultObject(ResultObject* object);

/**
 * The length of what a result object holds. Not logged.
 * @param object  the object; not null
 * @return the number of bytes: the low 32 bits of it, so that from 2 GiB on it is wrong
 */
TELVOFM_API int getResultObjectLength(const ResultObject* object);

/**
 * The bytes that a result object holds, with a 0x00 behind the last one. They may contain 0x00 themselves.
 * Not logged.
 * @param object  the object; not null
 * @return the first byte, the library's, valid until the object is filled again or destroyed
 */
TELVOFM_API const char* getResultObjectString(const ResultObject* object);

/** @} */

/**
 * @defgroup rawlog Raw log
 * @{
 *
 * Every byte on the link, in hexadecimal: `C: ` for those that the library sends, `S: ` for those of the
 * printer, a new line at each change of direction. It is off until it is switched on. Passwords and receipts
 * appear in it as they pass the link, and stay there. The settings are the library's, for all threads and
 * sessions, and outlive closeFM().
 */

/**
 * Switches the raw log on and empties its file. Not logged.
 * @param path  the file, in the encoding of the system's narrow file names; an empty one goes on with the
 *              file of an earlier call, which keeps what it holds, and without an earlier one nothing changes
 */
TELVOFM_API void setRawLogginOn(const char* path);

/** Switches the raw log off and keeps its path. The spelling is part of the interface. Not logged. */
TELVOFM_API void seRawLogginOff(void);

/** @} */

/**
 * @defgroup lifecycle Receipt: begin and end
 * @{
 *
 * A receipt is begun, filled with @ref items "items" and @ref discounts "discounts", settled with @ref
 * payments "payments" and ended. The library keeps no receipt and does not check the order of the calls: the
 * printer does, and refuses what comes out of turn with a code of its own. A refusal leaves the receipt as it
 * was.
 *
 * `row` is the first number of every command of a receipt; what it does there is the printer's.
 */

/**
 * Opens a receipt.
 * @param device          the printer's address
 * @param row             the printer's, the first number of the command
 * @param saleType        the printer's type of sale
 * @param commType        the printer's `commType`
 * @param paragonType     the printer's type of receipt
 * @param recapitulation  the printer's choice of a VAT table on the receipt
 * @param graphicsHeader  the printer's picture above the receipt
 * @return a command's code, 0 when done
 */
TELVOFM_API int paragonBegin(int device, int row, int saleType, int commType, int paragonType,
                             int recapitulation, int graphicsHeader);

/**
 * Closes the receipt.
 * @param device          the printer's address
 * @param row             the printer's, the first number of the command
 * @param graphicsHeader  the printer's picture below the receipt
 * @return a command's code, 0 when done
 */
TELVOFM_API int paragonEnd(int device, int row, int graphicsHeader);

/**
 * Opens the selling day.
 * @param deviceNumber  the printer's address, as `device` elsewhere
 * @param saleMode      the printer's mode of sale
 * @return a command's code, 0 when done
 */
TELVOFM_API int sellingDayBegin(int deviceNumber, int saleMode);

/**
 * Cancels the open receipt.
 * @param device       the printer's address
 * @param row          the printer's, the first number of the command
 * @param description  any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int destroyParagon(int device, int row, const char* description);

/**
 * Prints the last receipt again.
 * @param device  the printer's address
 * @return a command's code, 0 when done
 */
TELVOFM_API int repeatParagon(int device);

/**
 * Cancels the running print job.
 * @param device  the printer's address
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJobCancel(int device);

/**
 * Confirms the printer's note.
 * @param device  the printer's address
 * @return a command's code, 0 when done
 */
TELVOFM_API int confirmNote(int device);

/** @} */

/**
 * @defgroup items Receipt: items
 * @{
 *
 * Each of these functions adds a line to the open receipt. The plain ones take amounts as numbers, the `_int`
 * ones as whole numbers in fixed units, the `_str` ones as text. The library does not compare the amounts
 * with each other.
 *
 * The name is cut nowhere; while setAutoTwoLineItem() is on, blanks fill it up to 40 bytes. The unit is sent
 * as exactly 3 bytes, filled with blanks or cut. Both count bytes of the caller's text, before any
 * conversion; the call log shows them as they were given.
 */

/**
 * A sale.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     the line's total, sent with 2 decimals: 12.5 as 12.50
 * @param vat            the letter of the VAT rate
 * @param amount         the quantity, sent with 3 decimals: 1.5 as 1.500
 * @param unitPrice      the price of one unit, sent with 2 decimals
 * @param unit           sent as exactly 3 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemSale(int device, int row, const char* commodityName, double totalPrice, char vat,
                         double amount, double unitPrice, const char* unit);

/**
 * A sale, as itemSale() with amounts in fixed units.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     hundredths: 1250 is sent as 12.50
 * @param vat            its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param amount         the quantity in thousandths: 1500 is sent as 1.500
 * @param unitPrice      ten-thousandths, sent with 2 decimals: 83333 as 8.33
 * @param unit           sent as exactly 3 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemSale_int(int device, int row, const char* commodityName, int totalPrice, const char* vat,
                             int amount, int unitPrice, const char* unit);

/**
 * A sale, as itemSale() with amounts as text.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     text, sent as given
 * @param vat            its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param amount         the quantity as text, sent as given
 * @param unitPrice      text, sent as given
 * @param unit           sent as exactly 3 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemSale_str(int device, int row, const char* commodityName, const char* totalPrice,
                             const char* vat, const char* amount, const char* unitPrice, const char* unit);

/**
 * The void of an earlier line of this receipt.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     the line's total, sent with 2 decimals: 12.5 as 12.50
 * @param vat            the letter of the VAT rate
 * @param amount         the quantity, sent with 3 decimals: 1.5 as 1.500
 * @param unitPrice      the price of one unit, sent with 2 decimals
 * @param unit           sent as exactly 3 bytes, converted
 * @param receiptNumber  the receipt that it refers to, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemVoid(int device, int row, const char* commodityName, double totalPrice, char vat,
                         double amount, double unitPrice, const char* unit, const char* receiptNumber);

/**
 * The void of an earlier line of this receipt, as itemVoid() with amounts in fixed units.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     hundredths: 1250 is sent as 12.50
 * @param vat            its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param amount         the quantity in thousandths: 1500 is sent as 1.500
 * @param unitPrice      ten-thousandths, sent with 2 decimals: 83333 as 8.33
 * @param unit           sent as exactly 3 bytes, converted
 * @param receiptNumber  the receipt that it refers to, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemVoid_int(int device, int row, const char* commodityName, int totalPrice, const char* vat,
                             int amount, int unitPrice, const char* unit, const char* receiptNumber);

/**
 * The void of an earlier line of this receipt, as itemVoid() with amounts as text. Logged under the name
 * itemVoid_int.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     text, sent as given
 * @param vat            its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param amount         the quantity as text, sent as given
 * @param unitPrice      text, sent as given
 * @param unit           sent as exactly 3 bytes, converted
 * @param receiptNumber  the receipt that it refers to, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemVoid_str(int device, int row, const char* commodityName, const char* totalPrice,
                             const char* vat, const char* amount, const char* unitPrice, const char* unit,
                             const char* receiptNumber);

/**
 * Goods returned from an earlier receipt.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     the line's total, sent with 2 decimals: 12.5 as 12.50
 * @param vat            the letter of the VAT rate
 * @param amount         the quantity, sent with 3 decimals: 1.5 as 1.500
 * @param unitPrice      the price of one unit, sent with 2 decimals
 * @param unit           sent as exactly 3 bytes, converted
 * @param receiptNumber  the receipt that it refers to, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemReturn(int device, int row, const char* commodityName, double totalPrice, char vat,
                           double amount, double unitPrice, const char* unit, const char* receiptNumber);

/**
 * Goods returned from an earlier receipt, as itemReturn() with amounts in fixed units.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     hundredths: 1250 is sent as 12.50
 * @param vat            its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param amount         the quantity in thousandths: 1500 is sent as 1.500
 * @param unitPrice      ten-thousandths, sent with 2 decimals: 83333 as 8.33
 * @param unit           sent as exactly 3 bytes, converted
 * @param receiptNumber  the receipt that it refers to, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemReturn_int(int device, int row, const char* commodityName, int totalPrice,
                               const char* vat, int amount, int unitPrice, const char* unit,
                               const char* receiptNumber);

/**
 * Goods returned from an earlier receipt, as itemReturn() with amounts as text.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     text, sent as given
 * @param vat            its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param amount         the quantity as text, sent as given
 * @param unitPrice      text, sent as given
 * @param unit           sent as exactly 3 bytes, converted
 * @param receiptNumber  the receipt that it refers to, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemReturn_str(int device, int row, const char* commodityName, const char* totalPrice,
                               const char* vat, const char* amount, const char* unitPrice, const char* unit,
                               const char* receiptNumber);

/**
 * A negative item. The amounts are sent with the sign that they have; which one is wanted is the printer's.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     the line's total, sent with 2 decimals: 12.5 as 12.50
 * @param vat            the letter of the VAT rate
 * @param amount         the quantity, sent with 3 decimals: 1.5 as 1.500
 * @param unitPrice      the price of one unit, sent with 2 decimals
 * @param unit           sent as exactly 3 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemNegative(int device, int row, const char* commodityName, double totalPrice, char vat,
                             double amount, double unitPrice, const char* unit);

/**
 * A negative item, as itemNegative() with amounts in fixed units.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     hundredths: 1250 is sent as 12.50
 * @param vat            its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param amount         the quantity in thousandths: 1500 is sent as 1.500
 * @param unitPrice      ten-thousandths, sent with 2 decimals: 83333 as 8.33
 * @param unit           sent as exactly 3 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemNegative_int(int device, int row, const char* commodityName, int totalPrice,
                                 const char* vat, int amount, int unitPrice, const char* unit);

/**
 * A negative item, as itemNegative() with amounts as text. Logged under the name itemNegative_int.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param commodityName  the name, any length, converted; see setAutoTwoLineItem()
 * @param totalPrice     text, sent as given
 * @param vat            its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param amount         the quantity as text, sent as given
 * @param unitPrice      text, sent as given
 * @param unit           sent as exactly 3 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemNegative_str(int device, int row, const char* commodityName, const char* totalPrice,
                                 const char* vat, const char* amount, const char* unitPrice,
                                 const char* unit);

/**
 * Has blanks fill item names up to 40 bytes, or no longer. It belongs to the open session and begins as off;
 * without an open session the call does nothing. Not logged.
 * @param on  whether names shorter than 40 bytes are filled up
 */
TELVOFM_API void setAutoTwoLineItem(TelvofmBool on);

/**
 * Whether item names are filled up. Not logged.
 * @return what setAutoTwoLineItem() has set; false without an open session
 */
TELVOFM_API bool isAutoTwoLineItem(void);

/** @} */

/**
 * @defgroup discounts Receipt: discounts and subtotal
 * @{
 *
 * Discounts on an item line or on the subtotal of the open receipt, and the subtotal itself. The library
 * computes nothing: what the values mean depends on the operation type and is the printer's. Descriptions are
 * cut nowhere.
 *
 * A blank as VAT letter is left out of the item discounts, whose field is then empty, and is sent with the
 * subtotal discounts: this is meant.
 */

/**
 * A discount on an item.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's kind of operation
 * @param discountValue  sent with 2 decimals
 * @param vat            the letter of the VAT rate; a blank is left out
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemDiscount(int device, int row, const char* description, int operationType,
                             double discountValue, char vat);

/**
 * A discount on an item, as itemDiscount() with amounts in hundredths. Writes two lines to the call log, the
 * first with its name alone.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's kind of operation
 * @param discountValue  hundredths: 150 is sent as 1.50
 * @param vat            its first character is the letter of the VAT rate; a blank is left out, an empty text
 *                       sends 0x00
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemDiscount_int(int device, int row, const char* description, int operationType,
                                 int discountValue, const char* vat);

/**
 * A discount on an item, as itemDiscount() with amounts as text. Logged under the name itemDiscount.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's kind of operation
 * @param discountValue  text, sent as given
 * @param vat            its first character is the letter of the VAT rate; a blank is left out, an empty text
 *                       sends 0x00
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemDiscount_str(int device, int row, const char* description, int operationType,
                                 const char* discountValue, const char* vat);

/**
 * A discount on an item with its total.
 * @param device              the printer's address
 * @param row                 the printer's, the first number of the command
 * @param description         any length, converted
 * @param operationType       the printer's kind of operation
 * @param discountValue       sent with 2 decimals
 * @param vat                 the letter of the VAT rate; a blank is left out
 * @param discountTotalValue  sent with 2 decimals
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemDiscount2(int device, int row, const char* description, int operationType,
                              double discountValue, char vat, double discountTotalValue);

/**
 * A discount on an item with its total, as itemDiscount2() with amounts in hundredths.
 * @param device              the printer's address
 * @param row                 the printer's, the first number of the command
 * @param description         any length, converted
 * @param operationType       the printer's kind of operation
 * @param discountValue       hundredths: 150 is sent as 1.50
 * @param vat                 its first character is the letter of the VAT rate; a blank is left out, an empty
 *                            text sends 0x00
 * @param discountTotalValue  hundredths: 2000 is sent as 20.00
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemDiscount2_int(int device, int row, const char* description, int operationType,
                                  int discountValue, const char* vat, int discountTotalValue);

/**
 * A discount on an item with its total, as itemDiscount2() with amounts as text. Logged under the name
 * itemDiscount2.
 * @param device              the printer's address
 * @param row                 the printer's, the first number of the command
 * @param description         any length, converted
 * @param operationType       the printer's kind of operation
 * @param discountValue       text, sent as given
 * @param vat                 its first character is the letter of the VAT rate; a blank is left out, an empty
 *                            text sends 0x00
 * @param discountTotalValue  text, sent as given
 * @return a command's code, 0 when done
 */
TELVOFM_API int itemDiscount2_str(int device, int row, const char* description, int operationType,
                                  const char* discountValue, const char* vat, const char* discountTotalValue);

/**
 * The subtotal of the open receipt.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's kind of operation
 * @return a command's code, 0 when done
 */
TELVOFM_API int subTotal(int device, int row, const char* description, int operationType);

/**
 * A discount on the subtotal.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's kind of operation
 * @param discountValue  sent with 2 decimals
 * @param vat            the letter of the VAT rate; a blank is sent
 * @return a command's code, 0 when done
 */
TELVOFM_API int subTotalDiscount(int device, int row, const char* description, int operationType,
                                 double discountValue, char vat);

/**
 * A discount on the subtotal, as subTotalDiscount() with amounts in hundredths; `vat` stays a `char`.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's kind of operation
 * @param discountValue  hundredths: 150 is sent as 1.50
 * @param vat            the letter of the VAT rate; a blank is sent
 * @return a command's code, 0 when done
 */
TELVOFM_API int subTotalDiscount_int(int device, int row, const char* description, int operationType,
                                     int discountValue, char vat);

/**
 * A discount on the subtotal, as subTotalDiscount() with amounts as text. Logged under the name
 * subTotalDiscount.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's kind of operation
 * @param discountValue  text, sent as given
 * @param vat            its first character is the letter of the VAT rate; a blank is sent, an empty text
 *                       sends 0x00
 * @return a command's code, 0 when done
 */
TELVOFM_API int subTotalDiscount_str(int device, int row, const char* description, int operationType,
                                     const char* discountValue, const char* vat);

/**
 * A discount on the subtotal with its total. `vat` comes last, unlike in itemDiscount2().
 * @param device              the printer's address
 * @param row                 the printer's, the first number of the command
 * @param description         any length, converted
 * @param operationType       the printer's kind of operation
 * @param discountValue       sent with 2 decimals
 * @param discountTotalValue  sent with 2 decimals
 * @param vat                 the letter of the VAT rate; a blank is sent
 * @return a command's code, 0 when done
 */
TELVOFM_API int subTotalDiscount2(int device, int row, const char* description, int operationType,
                                  double discountValue, double discountTotalValue, char vat);

/**
 * A discount on the subtotal with its total, as subTotalDiscount2() with amounts in hundredths; `vat` stays a
 * `char`.
 * @param device              the printer's address
 * @param row                 the printer's, the first number of the command
 * @param description         any length, converted
 * @param operationType       the printer's kind of operation
 * @param discountValue       hundredths: 150 is sent as 1.50
 * @param discountTotalValue  hundredths: 2000 is sent as 20.00
 * @param vat                 the letter of the VAT rate; a blank is sent
 * @return a command's code, 0 when done
 */
TELVOFM_API int subTotalDiscount2_int(int device, int row, const char* description, int operationType,
                                      int discountValue, int discountTotalValue, char vat);

/**
 * A discount on the subtotal with its total, as subTotalDiscount2() with amounts as text. Logged under the
 * name subTotalDiscount2.
 * @param device              the printer's address
 * @param row                 the printer's, the first number of the command
 * @param description         any length, converted
 * @param operationType       the printer's kind of operation
 * @param discountValue       text, sent as given
 * @param discountTotalValue  text, sent as given
 * @param vat                 its first character is the letter of the VAT rate; a blank is sent, an empty
 *                            text sends 0x00
 * @return a command's code, 0 when done
 */
TELVOFM_API int subTotalDiscount2_str(int device, int row, const char* description, int operationType,
                                      const char* discountValue, const char* discountTotalValue,
                                      const char* vat);

/** @} */

/**
 * @defgroup payments Receipt: payments and drawer
 * @{
 *
 * The payments settle the open receipt, in one call or in several. The description of a payment is sent as
 * exactly 10 bytes of the caller's text, filled with blanks or cut; the call log shows it whole. An amount
 * paid and an exchange rate of exactly zero (also a negative zero) are sent as the single character `0`, a
 * total of zero as `0.00`; the `_str` functions send their texts as given, without this rule. There is no
 * `_str` form of payment1() and payment2().
 */

/**
 * A payment.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param paymentNumber  the printer's number of the payment type
 * @param total          sent with 2 decimals, zero as `0.00`
 * @param payedAmount    what is paid, sent with 2 decimals, zero as `0`
 * @param exchangeRate   sent with 4 decimals, zero as `0`
 * @param description    sent as exactly 10 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int payment(int device, int row, int paymentNumber, double total, double payedAmount,
                        double exchangeRate, const char* description);

/**
 * A payment, as payment() with amounts in fixed units.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param paymentNumber  the printer's number of the payment type
 * @param total          hundredths: 1250 is sent as 12.50
 * @param payedAmount    what is paid, in hundredths; 0 is sent as `0`
 * @param exchangeRate   ten-thousandths: 260950 is sent as 26.0950, 0 as `0`
 * @param description    sent as exactly 10 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int payment_int(int device, int row, int paymentNumber, int total, int payedAmount,
                            int exchangeRate, const char* description);

/**
 * A payment, as payment() with amounts as text.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param paymentNumber  the printer's number of the payment type
 * @param total          text, sent as given
 * @param payedAmount    what is paid as text, sent as given
 * @param exchangeRate   text, sent as given
 * @param description    sent as exactly 10 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int payment_str(int device, int row, int paymentNumber, const char* total,
                            const char* payedAmount, const char* exchangeRate, const char* description);

/**
 * A payment whose exchange rate carries a sign: as payment(), with `+` in front of the rate in every case.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param paymentNumber  the printer's number of the payment type
 * @param total          sent with 2 decimals, zero as `0.00`
 * @param payedAmount    what is paid, sent with 2 decimals, zero as `0`
 * @param exchangeRate   sent with 4 decimals and `+` in front: 26.095 as `+26.0950`, exactly zero as `+0`
 * @param description    sent as exactly 10 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int payment1(int device, int row, int paymentNumber, double total, double payedAmount,
                         double exchangeRate, const char* description);

/**
 * A payment whose exchange rate carries a sign, as payment1() with amounts in fixed units.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param paymentNumber  the printer's number of the payment type
 * @param total          hundredths: 1250 is sent as 12.50
 * @param payedAmount    what is paid, in hundredths; 0 is sent as `0`
 * @param exchangeRate   ten-thousandths, with `+` in front: 260950 is sent as `+26.0950`, 0 as `+0`
 * @param description    sent as exactly 10 bytes, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int payment1_int(int device, int row, int paymentNumber, int total, int payedAmount,
                             int exchangeRate, const char* description);

/**
 * A payment with the total paid so far.
 * @param device            the printer's address
 * @param row               the printer's, the first number of the command
 * @param paymentNumber     the printer's number of the payment type
 * @param total             sent with 2 decimals, zero as `0.00`
 * @param payedAmount       what is paid, sent with 2 decimals, zero as `0`
 * @param exchangeRate      sent with 4 decimals, zero as `0`
 * @param description       sent as exactly 10 bytes, converted
 * @param totalPayedAmount  paid so far, sent with 2 decimals, zero as `0`
 * @return a command's code, 0 when done
 */
TELVOFM_API int payment2(int device, int row, int paymentNumber, double total, double payedAmount,
                         double exchangeRate, const char* description, double totalPayedAmount);

/**
 * A payment with the total paid so far, as payment2() with amounts in fixed units.
 * @param device            the printer's address
 * @param row               the printer's, the first number of the command
 * @param paymentNumber     the printer's number of the payment type
 * @param total             hundredths: 1250 is sent as 12.50
 * @param payedAmount       what is paid, in hundredths; 0 is sent as `0`
 * @param exchangeRate      ten-thousandths: 260950 is sent as 26.0950, 0 as `0`
 * @param description       sent as exactly 10 bytes, converted
 * @param totalPayedAmount  paid so far, in hundredths; 0 is sent as `0`
 * @return a command's code, 0 when done
 */
TELVOFM_API int payment2_int(int device, int row, int paymentNumber, int total, int payedAmount,
                             int exchangeRate, const char* description, int totalPayedAmount);

/**
 * Puts money into the drawer or takes it out, as the operation type tells the printer. Here the description
 * is cut nowhere.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's direction
 * @param amount         sent with 2 decimals, zero as `0.00`
 * @param paymentNumber  the printer's number of the payment type
 * @return a command's code, 0 when done
 */
TELVOFM_API int depositeInDrawer(int device, int row, const char* description, int operationType,
                                 double amount, int paymentNumber);

/**
 * Puts money into the drawer or takes it out, as depositeInDrawer() with amounts in hundredths.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's direction
 * @param amount         hundredths: 1250 is sent as 12.50
 * @param paymentNumber  the printer's number of the payment type
 * @return a command's code, 0 when done
 */
TELVOFM_API int depositeInDrawer_int(int device, int row, const char* description, int operationType,
                                     int amount, int paymentNumber);

/**
 * Puts money into the drawer or takes it out, as depositeInDrawer() with amounts as text. Logged under the
 * name depositeInDrawer_int.
 * @param device         the printer's address
 * @param row            the printer's, the first number of the command
 * @param description    any length, converted
 * @param operationType  the printer's direction
 * @param amount         text, sent as given
 * @param paymentNumber  the printer's number of the payment type
 * @return a command's code, 0 when done
 */
TELVOFM_API int depositeInDrawer_str(int device, int row, const char* description, int operationType,
                                     const char* amount, int paymentNumber);

/** @} */

/**
 * @defgroup extras Receipt: what else it carries
 * @{
 *
 * Client, seller, invoice, vouchers and the like, and the look-up of receipts. Only the client's number and
 * the titles are converted on serial links; every other text of this group is sent byte for byte on every
 * link. No text is cut.
 */

/**
 * Identifies the client.
 * @param device  the printer's address
 * @param number  any length, converted
 * @param type    the printer's kind of number
 * @return a command's code, 0 when done
 */
TELVOFM_API int setClientID(int device, const char* number, int type);

/**
 * Refers to a receipt issued earlier.
 * @param device       the printer's address
 * @param orderNumber  the number of the receipt
 * @param dateTime     its date and time in the printer's form, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int printIssuedParagon(int device, int orderNumber, const char* dateTime);

/**
 * Sets the number of the invoice that the receipt pays.
 * @param device         the printer's address
 * @param invoiceNumber  any length, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setInvoiceNumber(int device, const char* invoiceNumber);

/**
 * Redeems a voucher on the receipt.
 * @param device         the printer's address
 * @param title          any length, converted
 * @param amount         the quantity, sent with 2 decimals
 * @param vat            the letter of the VAT rate; a blank is sent
 * @param price          sent with 2 decimals
 * @param voucherNumber  any length, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int redeemVoucher(int device, const char* title, double amount, char vat, double price,
                              const char* voucherNumber);

/**
 * Redeems a voucher on the receipt, as redeemVoucher() with amounts as text. Logged under the name
 * redeemVoucher.
 * @param device         the printer's address
 * @param title          any length, converted
 * @param amount         the quantity as text, sent as given
 * @param vat            its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param price          text, sent as given
 * @param voucherNumber  any length, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int redeemVoucher_str(int device, const char* title, const char* amount, const char* vat,
                                  const char* price, const char* voucherNumber);

/**
 * Deducts a down payment on the receipt.
 * @param device  the printer's address
 * @param title   any length, converted
 * @param amount  the quantity, sent with 2 decimals
 * @param vat     the letter of the VAT rate; a blank is sent
 * @param price   sent with 2 decimals
 * @return a command's code, 0 when done
 */
TELVOFM_API int deductDownPayment(int device, const char* title, double amount, char vat, double price);

/**
 * Deducts a down payment, as deductDownPayment() with amounts as text. Logged under the name
 * deductDownPayment.
 * @param device  the printer's address
 * @param title   any length, converted
 * @param amount  the quantity as text, sent as given
 * @param vat     its first character is the letter of the VAT rate; an empty text sends 0x00
 * @param price   text, sent as given
 * @return a command's code, 0 when done
 */
TELVOFM_API int deductDownPayment_str(int device, const char* title, const char* amount, const char* vat,
                                      const char* price);

/**
 * Asks for receipt identifiers. The reply is copied up to its first 0x00, with a terminating NUL.
 * @param device      the printer's address
 * @param inputType   the printer's letter of what `input` is, a single character
 * @param input       what is looked for, any length, byte for byte
 * @param buffer      gets the identifiers, converted; one that is too short ends the process (see @ref
 *                    replies)
 * @param bufferSize  its size in bytes, the NUL included
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getParagonIDs(int device, char inputType, const char* input, char* buffer, int bufferSize);

/**
 * Asks for receipt identifiers, as getParagonIDs(). Logged under the name getParagonIDs.
 * @param device      the printer's address
 * @param inputType   its first character is the printer's letter of what `input` is; an empty text sends 0x00
 * @param input       what is looked for, any length, byte for byte
 * @param buffer      gets the identifiers, converted; one that is too short ends the process (see @ref
 *                    replies)
 * @param bufferSize  its size in bytes, the NUL included
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getParagonIDs_str(int device, const char* inputType, const char* input, char* buffer,
                                  int bufferSize);

/**
 * Asks for receipt identifiers and puts the whole reply into a result object.
 * @param device     the printer's address
 * @param inputType  the printer's letter of what `input` is, a single character
 * @param input      what is looked for, any length, byte for byte
 * @param result     the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getParagonIDs_ResultObject(int device, char inputType, const char* input,
                                           ResultObject* result);

/**
 * Asks for receipt identifiers, as getParagonIDs_ResultObject().
 * @param device     the printer's address
 * @param inputType  its first character is the printer's letter of what `input` is; an empty text sends 0x00
 * @param input      what is looked for, any length, byte for byte
 * @param result     the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getParagonIDs_str_ResultObject(int device, const char* inputType, const char* input,
                                               ResultObject* result);

/**
 * Sets the transaction's identifier.
 * @param device        the printer's address
 * @param internalCode  the identifier, any length, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setTransactionID(int device, const char* internalCode);

/**
 * Sets the V48 value.
 * @param device    the printer's address
 * @param password  byte for byte; logged in clear
 * @param v48       the printer's value, a single character
 * @return a command's code, 0 when done
 */
TELVOFM_API int setV48(int device, const char* password, char v48);

/**
 * Sets the V48 value, as setV48(). Logged under the name setV48, the password in clear.
 * @param device    the printer's address
 * @param password  byte for byte; logged in clear
 * @param v48       its first character is the printer's value; an empty text sends 0x00
 * @return a command's code, 0 when done
 */
TELVOFM_API int setV48_str(int device, const char* password, const char* v48);

/**
 * Chooses the description of items with a zero VAT rate.
 * @param device  the printer's address
 * @param type    the printer's choice, a single character
 * @return a command's code, 0 when done
 */
TELVOFM_API int Popis0DPH(int device, char type);

/**
 * Chooses the description of items with a zero VAT rate, as Popis0DPH(). Logged under the name Popis0DPH.
 * @param device  the printer's address
 * @param type    its first character is the printer's choice; an empty text sends 0x00
 * @return a command's code, 0 when done
 */
TELVOFM_API int Popis0DPH_str(int device, const char* type);

/**
 * Identifies the seller.
 * @param device  the printer's address
 * @param number  any length, byte for byte, unlike the client's
 * @param type    the printer's kind of number, a single character
 * @return a command's code, 0 when done
 */
TELVOFM_API int setSellerID(int device, const char* number, char type);

/**
 * Identifies the seller, as setSellerID(). Logged under the name setSellerID.
 * @param device  the printer's address
 * @param number  any length, byte for byte, unlike the client's
 * @param type    its first character is the printer's kind of number; an empty text sends 0x00
 * @return a command's code, 0 when done
 */
TELVOFM_API int setSellerID_str(int device, const char* number, const char* type);

/**
 * Corrects a document that carries an error code.
 * @param device   the printer's address
 * @param errCode  the error code as text, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int opravaDokladu(int device, const char* errCode);

/**
 * Has the printer synchronise with PPEKK.
 * @param device  the printer's address
 * @return a command's code, 0 when done
 */
TELVOFM_API int synchronizationToPPEKK(int device);

/** @} */

/**
 * @defgroup vat Configuration: VAT rates
 * @{
 *
 * These functions program the printer's table of rates. Rates go out as whole percents: fractions are cut
 * off, 19.99 is sent as 19. A `double` beyond the range of `int`, or that is no number, is sent as
 * -2147483648. What the reverse constant is for, and in which unit the table functions want it, is the
 * printer's.
 */

/**
 * Sets one rate.
 * @param device           the printer's address
 * @param password         converted; logged as `*****`
 * @param vat              the letter of the rate
 * @param vatValue         the rate in percent, without its fraction
 * @param reverseConstant  with its fraction, six significant digits (16.666666 is sent as 16.6667); a
 *                         negative one is left out, so that its field is empty
 * @return a command's code, 0 when done
 */
TELVOFM_API int setVAT(int device, const char* password, char vat, double vatValue, double reverseConstant);

/**
 * Sets one rate, as setVAT(). Logged under the name setVAT.
 * @param device           the printer's address
 * @param password         converted; logged as `*****`
 * @param vat              its first character is the letter of the rate; an empty text sends 0x00
 * @param vatValue         the rate in percent, without its fraction
 * @param reverseConstant  with its fraction, six significant digits; a negative one is left out, so that its
 *                         field is empty
 * @return a command's code, 0 when done
 */
TELVOFM_API int setVAT_str(int device, const char* password, const char* vat, double vatValue,
                           double reverseConstant);

/**
 * Sets one rate, as setVAT() with amounts in hundredths.
 * @param device           the printer's address
 * @param password         converted; logged as `*****`
 * @param vat              its first character is the letter of the rate; an empty text sends 0x00
 * @param vatValue         hundredths of a percent, which are cut off: 2000 and 2050 are sent as 20
 * @param reverseConstant  hundredths, which are kept: 1667 is sent as 16.67; a negative one is left out
 * @return a command's code, 0 when done
 */
TELVOFM_API int setVAT_int(int device, const char* password, const char* vat, int vatValue,
                           int reverseConstant);

/**
 * Replaces the table by the rates A to E. Fractions of rates and of reverse constants are cut off, and
 * negative numbers are sent, unlike in setVAT().
 * @param device            the printer's address
 * @param password          converted; logged as `*****`
 * @param vatValueA         the rate A in percent, without its fraction
 * @param reverseConstantA  its reverse constant, without its fraction
 * @param vatValueB         the rate B in percent, without its fraction
 * @param reverseConstantB  its reverse constant, without its fraction
 * @param vatValueC         the rate C in percent, without its fraction
 * @param reverseConstantC  its reverse constant, without its fraction
 * @param vatValueD         the rate D in percent, without its fraction
 * @param reverseConstantD  its reverse constant, without its fraction
 * @param vatValueE         the rate E in percent, without its fraction
 * @param reverseConstantE  its reverse constant, without its fraction
 * @return a command's code, 0 when done
 */
TELVOFM_API int setAllVats(int device, const char* password, double vatValueA, double reverseConstantA,
                           double vatValueB, double reverseConstantB, double vatValueC,
                           double reverseConstantC, double vatValueD, double reverseConstantD,
                           double vatValueE, double reverseConstantE);

/**
 * Replaces the table by the rates A to H, from a date on; numbers as in setAllVats(). Logged under the name
 * setAllVats, the pairs F, G and H with the labels of E.
 * @param device            the printer's address
 * @param password          converted; logged as `*****`
 * @param vatValueA         the rate A in percent, without its fraction
 * @param reverseConstantA  its reverse constant, without its fraction
 * @param vatValueB         the rate B in percent, without its fraction
 * @param reverseConstantB  its reverse constant, without its fraction
 * @param vatValueC         the rate C in percent, without its fraction
 * @param reverseConstantC  its reverse constant, without its fraction
 * @param vatValueD         the rate D in percent, without its fraction
 * @param reverseConstantD  its reverse constant, without its fraction
 * @param vatValueE         the rate E in percent, without its fraction
 * @param reverseConstantE  its reverse constant, without its fraction
 * @param vatValueF         the rate F in percent, without its fraction
 * @param reverseConstantF  its reverse constant, without its fraction
 * @param vatValueG         the rate G in percent, without its fraction
 * @param reverseConstantG  its reverse constant, without its fraction
 * @param vatValueH         the rate H in percent, without its fraction
 * @param reverseConstantH  its reverse constant, without its fraction
 * @param date              from when on, in the printer's form, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setAllVats2(int device, const char* password, double vatValueA, double reverseConstantA,
                            double vatValueB, double reverseConstantB, double vatValueC,
                            double reverseConstantC, double vatValueD, double reverseConstantD,
                            double vatValueE, double reverseConstantE, double vatValueF,
                            double reverseConstantF, double vatValueG, double reverseConstantG,
                            double vatValueH, double reverseConstantH, const char* date);

/**
 * Replaces the table by the rates A to H, from a date on, in whole numbers that are sent unchanged (percents,
 * not hundredths). Logged as setAllVats2() is.
 * @param device            the printer's address
 * @param password          converted; logged as `*****`
 * @param vatValueA         the rate A in percent
 * @param reverseConstantA  its reverse constant
 * @param vatValueB         the rate B in percent
 * @param reverseConstantB  its reverse constant
 * @param vatValueC         the rate C in percent
 * @param reverseConstantC  its reverse constant
 * @param vatValueD         the rate D in percent
 * @param reverseConstantD  its reverse constant
 * @param vatValueE         the rate E in percent
 * @param reverseConstantE  its reverse constant
 * @param vatValueF         the rate F in percent
 * @param reverseConstantF  its reverse constant
 * @param vatValueG         the rate G in percent
 * @param reverseConstantG  its reverse constant
 * @param vatValueH         the rate H in percent
 * @param reverseConstantH  its reverse constant
 * @param date              from when on, in the printer's form, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setAllVats3(int device, const char* password, int vatValueA, int reverseConstantA,
                            int vatValueB, int reverseConstantB, int vatValueC, int reverseConstantC,
                            int vatValueD, int reverseConstantD, int vatValueE, int reverseConstantE,
                            int vatValueF, int reverseConstantF, int vatValueG, int reverseConstantG,
                            int vatValueH, int reverseConstantH, const char* date);

/** @} */

/**
 * @defgroup setup Configuration: setup
 * @{
 *
 * The printer's standing settings: payment types, passwords, numbered parameters, the lines around receipts,
 * the exchange rate. What the numbers do, and which are allowed, is the printer's. Texts may have any length
 * and may be empty, and are converted, passwords too.
 */

/**
 * Sets the escape sequence of the customer display.
 * @param device    the printer's address
 * @param sequence  the sequence up to its first 0x00, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setEscapeSequence(int device, const char* sequence);

/**
 * Sets a payment type.
 * @param device             the printer's address
 * @param paymentTypeNumber  the printer's number of the payment type
 * @param minCurrency        its smallest unit, sent with 2 decimals: 0.5 as 0.50
 * @param overPay            whether more than is due may be paid; on the wire `0` allows it and `1` does not
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPaymentType(int device, int paymentTypeNumber, double minCurrency, TelvofmBool overPay);

/**
 * Sets a payment type, as setPaymentType() with amounts in hundredths.
 * @param device             the printer's address
 * @param paymentTypeNumber  the printer's number of the payment type
 * @param minCurrency        its smallest unit in hundredths: 150 is sent as 1.50
 * @param overPay            1 allows that more than is due is paid, any other number does not; sent as `0`
 *                           and `1`
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPaymentType_int(int device, int paymentTypeNumber, int minCurrency, int overPay);

/**
 * Sets a payment type with its name.
 * @param device             the printer's address
 * @param paymentTypeName    its name, any length, converted
 * @param paymentTypeNumber  the printer's number of the payment type
 * @param minCurrency        its smallest unit, sent with 2 decimals: 0.5 as 0.50
 * @param overPay            whether more than is due may be paid; on the wire `0` allows it and `1` does not
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPaymentType2(int device, const char* paymentTypeName, int paymentTypeNumber,
                                double minCurrency, TelvofmBool overPay);

/**
 * Sets a payment type with its name, as setPaymentType2() with amounts in hundredths.
 * @param device             the printer's address
 * @param paymentTypeName    its name, any length, converted
 * @param paymentTypeNumber  the printer's number of the payment type
 * @param minCurrency        its smallest unit in hundredths: 150 is sent as 1.50
 * @param overPay            1 allows that more than is due is paid, any other number does not; sent as `0`
 *                           and `1`
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPaymentType2_int(int device, const char* paymentTypeName, int paymentTypeNumber,
                                    int minCurrency, int overPay);

/**
 * Replaces a password of the printer.
 * @param device       the printer's address
 * @param oldPassword  the present password, converted; logged as `*****`
 * @param newPassword  the new one, converted; logged as `*****`
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPassword(int device, const char* oldPassword, const char* newPassword);

/**
 * Tells the printer which printer mechanism it drives.
 * @param device           the printer's address
 * @param servicePassword  converted; logged as `*****`
 * @param printerType      the printer's number of the mechanism
 * @param printFormat      the printer's number of the format
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPrinterType(int device, const char* servicePassword, int printerType, int printFormat);

/**
 * Sets a numbered parameter.
 * @param device       the printer's address
 * @param password     converted; logged as `*****`
 * @param paramNumber  the printer's number of the parameter
 * @param paramValue   its value
 * @return a command's code, 0 when done
 */
TELVOFM_API int setParameter(int device, const char* password, int paramNumber, int paramValue);

/**
 * Sets one row of the receipt's header.
 * @param device     the printer's address
 * @param password   converted; logged as `*****`
 * @param rowNumber  the printer's number of the row
 * @param text       the row, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setHeader(int device, const char* password, int rowNumber, const char* text);

/**
 * Sets the additional header line.
 * @param device  the printer's address
 * @param text    the line, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setAdditionalHeader(int device, const char* text);

/**
 * Sets the additional footer line.
 * @param device  the printer's address
 * @param text    the line, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setAdditionalFooter(int device, const char* text);

/**
 * Sets the super footer.
 * @param device  the printer's address
 * @param text    the line, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setSuperFooter(int device, const char* text);

/**
 * Sets the line before a receipt. Writes nothing to the call log.
 * @param device       the printer's address
 * @param description  the line, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPreline(int device, const char* description);

/**
 * Sets the line after a receipt.
 * @param device       the printer's address
 * @param description  the line, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPostline(int device, const char* description);

/**
 * Sets the exchange rate of the euro.
 * @param device        the printer's address
 * @param exchangeRate  sent with 4 decimals: 30.126 as 30.1260
 * @return a command's code, 0 when done
 */
TELVOFM_API int setEuroExchangeRate(int device, double exchangeRate);

/**
 * Sets the exchange rate of the euro, as setEuroExchangeRate() with the rate in ten-thousandths. The call log
 * labels it exchangeRate_2.
 * @param device        the printer's address
 * @param exchangeRate  ten-thousandths: 301260 is sent as 30.1260
 * @return a command's code, 0 when done
 */
TELVOFM_API int setEuroExchangeRate_int(int device, int exchangeRate);

/** @} */

/**
 * @defgroup service Configuration: fiscalization and service
 * @{
 *
 * The life of the printer as a fiscal device. The printer judges passwords, codes and dates and decides in
 * which state it allows what; some of these commands cannot be undone. Texts may have any length and may be
 * empty. Two passwords of this group, those of swReset() and testTelvoFM(), are sent byte for byte and logged
 * in clear.
 */

/**
 * Initialises the fiscal memory.
 * @param device           the printer's address
 * @param servicePassword  converted; logged as `*****`
 * @return a command's code, 0 when done
 */
TELVOFM_API int initFP(int device, const char* servicePassword);

/**
 * Initialises the fiscal module.
 * @param device           the printer's address
 * @param servicePassword  converted; logged as `*****`
 * @return a command's code, 0 when done
 */
TELVOFM_API int initFM(int device, const char* servicePassword);

/**
 * Initialises the electronic journal.
 * @param device           the printer's address
 * @param servicePassword  converted; logged as `*****`
 * @return a command's code, 0 when done
 */
TELVOFM_API int initELJ(int device, const char* servicePassword);

/**
 * Enables an inspection.
 * @param device           the printer's address
 * @param servicePassword  converted; logged as `*****`
 * @return a command's code, 0 when done
 */
TELVOFM_API int inspectionEnabled(int device, const char* servicePassword);

/**
 * Carries out the inspection E1.
 * @param device           the printer's address
 * @param servicePassword  converted; left out of the call log, not even shown as `*****`
 * @param deltaSI          the printer's number
 * @return a command's code, 0 when done
 */
TELVOFM_API int inspectionE1(int device, const char* servicePassword, int deltaSI);

/**
 * Lets the printer verify the checksum of a closure in the electronic journal.
 * @param device         the printer's address
 * @param closureNumber  the number of the closure
 * @return a command's code, 0 when done
 */
TELVOFM_API int verifyCRCELJ(int device, int closureNumber);

/**
 * Closes the journal's card.
 * @param device  the printer's address
 * @return a command's code, 0 when done
 */
TELVOFM_API int closeELJcard(int device);

/**
 * Fiscalizes the printer.
 * @param device    the printer's address
 * @param password  converted; logged as `*****`
 * @param dkp       the registration code in the printer's form, converted; logged in clear
 * @return a command's code, 0 when done
 */
TELVOFM_API int fiscalization(int device, const char* password, const char* dkp);

/**
 * Defiscalizes the printer.
 * @param device           the printer's address
 * @param servicePassword  converted; logged as `*****`
 * @return a command's code, 0 when done
 */
TELVOFM_API int defiscalizationFM(int device, const char* servicePassword);

/**
 * Sets the printer's clock.
 * @param device  the printer's address
 * @param date    date and time in the printer's form, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setDateTime(int device, const char* date);

/**
 * Hands over the free identifier.
 * @param device  the printer's address
 * @param print   whether the printer prints it; sent and logged as 1 or 0
 * @param id      the identifier, any length, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int freeID(int device, TelvofmBool print, const char* id);

/**
 * Resets the printer's software.
 * @param device    the printer's address
 * @param password  byte for byte; logged in clear
 * @return a command's code, 0 when done
 */
TELVOFM_API int swReset(int device, const char* password);

/**
 * Lets the printer test one of its devices.
 * @param device        the printer's address
 * @param password      byte for byte; logged in clear
 * @param targetDevice  the printer's number of the device to be tested; labelled `device ` in the call log,
 *                      as the address is
 * @return a command's code, 0 when done
 */
TELVOFM_API int testTelvoFM(int device, const char* password, int targetDevice);

/**
 * Clears the printer's error states. The call log shows the word resetStates and nothing else.
 * @param device  the printer's address
 * @return a command's code, 0 when done
 */
TELVOFM_API int clearErrorStates(int device);

/** @} */

/**
 * @defgroup announcements Configuration: announcements, display, codes
 * @{
 *
 * Printing outside a receipt, the customer display, bar codes and QR codes, and the settings of the printer
 * mechanism. What the numbers mean is the printer's. Texts may have any length and may be empty, and are
 * converted, passwords and escape sequences too.
 */

/**
 * Prints a line of free text outside a receipt.
 * @param device     the printer's address
 * @param rowNumber  the printer's row; no number is too large for the library
 * @param text       the line, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int printAnnouncement(int device, int rowNumber, const char* text);

/**
 * Prints a line of free text in the printer's second variant; the printer decides what this one leaves out.
 * @param device     the printer's address
 * @param rowNumber  the printer's row; no number is too large for the library
 * @param text       the line, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int printAnnouncementNF(int device, int rowNumber, const char* text);

/**
 * Shows a text on the customer display.
 * @param device       the printer's address
 * @param displayType  the printer's number of the display
 * @param escSequence  an escape sequence of the display in front of the text, converted
 * @param text         the text, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int printDisplay(int device, int displayType, const char* escSequence, const char* text);

/**
 * Clears the customer display.
 * @param device       the printer's address
 * @param displayType  the printer's number of the display
 * @param escSequence  an escape sequence of the display, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int clearDisplay(int device, int displayType, const char* escSequence);

/**
 * Sets the parameters of the display.
 * @param device     the printer's address
 * @param password   converted; left out of the call log, not even shown as `*****`
 * @param dispF      the printer's number
 * @param dispT      the printer's number
 * @param parameter  the printer's text, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int setDispF(int device, const char* password, int dispF, int dispT, const char* parameter);

/**
 * Prints a bar code.
 * @param device    the printer's address
 * @param codeType  the printer's number of the kind of code
 * @param code      what it says, any length, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int printBC(int device, int codeType, const char* code);

/**
 * Sets how bar codes are printed.
 * @param device        the printer's address
 * @param textPosition  the printer's place of the text
 * @param textFont      the printer's font of the text
 * @param height        the height, in the printer's unit
 * @param width         the width, in the printer's unit
 * @return a command's code, 0 when done
 */
TELVOFM_API int setBCparm(int device, int textPosition, int textFont, int height, int width);

/**
 * Sets how QR codes are printed.
 * @param device                the printer's address
 * @param model                 the printer's number of the model
 * @param moduleWidth           the width of a module, in the printer's unit
 * @param errorCorrectionLevel  the printer's number of the level
 * @param leftMargin            the left margin, in the printer's unit
 * @param viewMode              the printer's number of the mode
 * @return a command's code, 0 when done
 */
TELVOFM_API int setQRparm(int device, int model, int moduleWidth, int errorCorrectionLevel, int leftMargin,
                          int viewMode);

/**
 * Prints a QR code: a command, and then its text in blocks of at most 256 bytes, in one piece before any
 * other thread's call. After a failure the printer may already have accepted the command; nothing takes it
 * back.
 * @param device  the printer's address
 * @param text    what the code says, any length, converted; with an empty one only the command is sent
 * @return an upload's code, 0 when done
 */
TELVOFM_API int printQRCode(int device, const char* text);

/**
 * Sets the width of the paper.
 * @param device  the printer's address
 * @param width   columns
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPRNcolumns(int device, int width);

/**
 * Sets a parameter of the printer mechanism.
 * @param device     the printer's address
 * @param password   converted; logged as `*****`
 * @param paramType  the printer's number of the parameter
 * @param value      its value
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPParameter(int device, const char* password, int paramType, int value);

/**
 * Sets the speed of the printer mechanism; the link to the printer keeps its own.
 * @param device  the printer's address
 * @param baud    the speed, sent as given
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPRNBd(int device, int baud);

/**
 * Sets the printer's deltaSI.
 * @param device           the printer's address
 * @param servicePassword  converted; left out of the call log, not even shown as `*****`
 * @param deltaSI          the printer's number; left out of the call log too
 * @return a command's code, 0 when done
 */
TELVOFM_API int setDeltaSI(int device, const char* servicePassword, int deltaSI);

/** @} */

/**
 * @defgroup registration Configuration: online registration
 * @{
 *
 * What the printer needs to register sales online. All texts of this group are sent byte for byte, also on
 * serial links; they may have any length and may be empty.
 */

/**
 * Tells where the cash register stands by its position; which coordinate is the latitude is the printer's.
 * The call log shows six significant digits.
 * @param device  the printer's address
 * @param vertX   the first coordinate in degrees, sent with 10 decimals: 48.1 as 48.1000000000
 * @param vertY   the second coordinate in degrees, sent with 10 decimals
 * @return a command's code, 0 when done
 */
TELVOFM_API int setLocationGPS(int device, double vertX, double vertY);

/**
 * Tells where the cash register stands by its postal address.
 * @param device        the printer's address
 * @param municipality  the town, byte for byte
 * @param street        the street, byte for byte
 * @param number        the first number of the house, byte for byte
 * @param subNumber     the second number of the house, byte for byte
 * @param zip           the postal code, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setLocationAddress(int device, const char* municipality, const char* street,
                                   const char* number, const char* subNumber, const char* zip);

/**
 * Tells where the cash register stands in free words.
 * @param device       the printer's address
 * @param description  any length, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setLocationOther(int device, const char* description);

/**
 * Sets the address for mail from the printer.
 * @param device  the printer's address
 * @param email   the address, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setEmail(int device, const char* email);

/**
 * Sets the mail server.
 * @param device     the printer's address
 * @param type       its first character is the printer's type; an empty text sends 0x00
 * @param ipAddress  the server, byte for byte
 * @param port       a signed number of 16 bits and sent so: from 32768 on as its negative counterpart, 65535
 *                   as -1
 * @param localDir   the printer's directory, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setSMTP(int device, const char* type, const char* ipAddress, int16_t port,
                        const char* localDir);

/**
 * Tells the printer the path of its authentication key; the library does not open the file.
 * @param device    the printer's address
 * @param password  byte for byte; logged in clear
 * @param filePath  the path, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setAutKey(int device, const char* password, const char* filePath);

/**
 * Sets the CHDU interface.
 * @param device          the printer's address
 * @param interfaceType   the printer's type of interface, a single character
 * @param interfaceTitle  its title, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPCHDU(int device, char interfaceType, const char* interfaceTitle);

/**
 * Sets the CHDU interface, as setPCHDU(). Logged under the name setPCHDU.
 * @param device          the printer's address
 * @param interfaceType   its first character is the printer's type of interface; an empty text sends 0x00
 * @param interfaceTitle  its title, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setPCHDU_str(int device, const char* interfaceType, const char* interfaceTitle);

/**
 * Tells the printer the path of the subject's identification data; the library does not open the file.
 * @param device    the printer's address
 * @param filePath  the path, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int setSubjectIDData(int device, const char* filePath);

/**
 * Lets the printer send one unsent packet. Logged under the name sendUnsendedSFSpacket.
 * @param device  the printer's address
 * @return a command's code, 0 when done
 */
TELVOFM_API int sendUnsentSFSpacket(int device);

/**
 * Prints the packets that are not sent yet. Logged under the name printUnsendedSFSpackets.
 * @param device  the printer's address
 * @return a command's code, 0 when done
 */
TELVOFM_API int printUnsentSFSpackets(int device);

/**
 * Asks the printer for the packets of the last transactions; nothing is read back. The call log shows the
 * count but not the device.
 * @param device            the printer's address
 * @param transactionCount  how many transactions
 * @return a command's code, 0 when done
 */
TELVOFM_API int getLastTransactionPackets(int device, int transactionCount);

/** @} */

/**
 * @defgroup reports Reports: printed reports
 * @{
 *
 * Reports and extracts that the printer prints itself; nothing is read back. What the type letters, the print
 * types and the numbers mean, and which are allowed, is the printer's. Dates, receipt numbers and the
 * password are converted.
 */

/**
 * Prints a report: the daily closure, for example.
 * @param device        the printer's address
 * @param reportType    the printer's letter of the report, a single character
 * @param reportNumber  the printer's number
 * @return a command's code, 0 when done
 */
TELVOFM_API int printReport(int device, char reportType, int reportNumber);

/**
 * Prints a report, as printReport().
 * @param device        the printer's address
 * @param reportType    its first character is the printer's letter of the report; an empty text sends 0x00
 * @param reportNumber  the printer's number
 * @return a command's code, 0 when done
 */
TELVOFM_API int printReport_str(int device, const char* reportType, int reportNumber);

/**
 * Prints a journal.
 * @param device         the printer's address
 * @param journalType    the printer's letter of the journal, a single character
 * @param journalNumber  the printer's number of the journal
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournal(int device, char journalType, int journalNumber);

/**
 * Prints a journal, as printJournal().
 * @param device         the printer's address
 * @param journalType    its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param journalNumber  the printer's number of the journal
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournal_str(int device, const char* journalType, int journalNumber);

/**
 * Prints the journal's extract D, by journal type and dates.
 * @param device       the printer's address
 * @param journalType  the printer's letter of the journal, a single character
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournalStructD(int device, char journalType, const char* dateFrom, const char* dateTo);

/**
 * Prints the journal's extract D, as printJournalStructD().
 * @param device       the printer's address
 * @param journalType  its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournalStructD_str(int device, const char* journalType, const char* dateFrom,
                                        const char* dateTo);

/**
 * Prints the journal's extract D1, by journal type and dates. Logged under the name printJournalStructD_str.
 * @param device       the printer's address
 * @param journalType  its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournalStructD1(int device, const char* journalType, const char* dateFrom,
                                     const char* dateTo);

/**
 * Prints the journal's extract Z, by numbers.
 * @param device      the printer's address
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournalStructZ(int device, int numberFrom, int numberTo);

/**
 * Prints the journal's extract Z1, by document type and numbers.
 * @param device      the printer's address
 * @param docType     its first character is the printer's letter of the document; an empty text sends 0x00
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournalStructZ1(int device, const char* docType, int numberFrom, int numberTo);

/**
 * Prints the journal's extract U: one receipt.
 * @param device     the printer's address
 * @param paragonSn  the number of the receipt, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournalStructU(int device, const char* paragonSn);

/**
 * Prints the yearly closure.
 * @param device    the printer's address
 * @param password  converted; logged as `*****`
 * @return a command's code, 0 when done
 */
TELVOFM_API int printYearlyClosure(int device, const char* password);

/**
 * Prints an extract of the fiscal memory by dates. It has the command code of the yearly closure; the printer
 * tells them apart by their fields.
 * @param device     the printer's address
 * @param printType  the printer's type of extract
 * @param dateFrom   the first date in the printer's form, converted
 * @param dateTo     the last date, converted
 * @return a command's code, 0 when done
 */
TELVOFM_API int printIntervalFPD(int device, int printType, const char* dateFrom, const char* dateTo);

/**
 * Prints an extract of the fiscal memory by numbers.
 * @param device      the printer's address
 * @param printType   the printer's type of extract
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @return a command's code, 0 when done
 */
TELVOFM_API int printIntervalFPC(int device, int printType, int numberFrom, int numberTo);

/** @} */

/**
 * @defgroup journals Reports: journals
 * @{
 *
 * The electronic journal, whole or in extracts, into a buffer, a result object or a file. What the letters
 * mean, and what stands in a journal, is the printer's: replies are not parsed. See @ref replies for what
 * becomes of them; only getJournal_str_count() and result objects tell their length.
 */

/**
 * Reads the whole journal into a buffer.
 * @param device      the printer's address
 * @param buffer      gets the reply exactly; one that is too short ends the process (see @ref replies)
 * @param bufferSize  its size in bytes
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournal(int device, char* buffer, int bufferSize);

/**
 * Reads the whole journal into a buffer, as getJournal(), and tells its length.
 * @param device      the printer's address
 * @param buffer      gets the reply exactly; one that is too short ends the process (see @ref replies)
 * @param bufferSize  its size in bytes
 * @param count       gets the length of the reply in bytes, 0 for an empty one; null is ignored
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournal_str_count(int device, char* buffer, int bufferSize, unsigned int* count);

/**
 * Reads the whole journal into a result object. Logged after success only, under the name getJournal and with
 * the whole journal.
 * @param device  the printer's address
 * @param result  the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournal_ResultObject(int device, ResultObject* result);

/**
 * Reads the whole journal into a file, which is created when all of it has come.
 * @param device    the printer's address
 * @param fileName  the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int getJournal_str_tofile(int device, const char* fileName);

/**
 * Reads the extract D, by journal type and dates, into a buffer, each 0x00 of it as a blank. At most
 * `bufferSize` bytes are copied, but the terminating 0x00 goes to the position of the reply's full length,
 * **also beyond the buffer**: it must have room for the reply and one byte more.
 * @param device       the printer's address
 * @param journalType  the printer's letter of the journal, a single character
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @param buffer       gets the reply with a terminator; the caller answers for its size, see above
 * @param bufferSize   how many bytes are copied at most
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructD(int device, char journalType, const char* dateFrom, const char* dateTo,
                                  char* buffer, int bufferSize);

/**
 * Reads the extract D into a buffer, as getJournalStructD(), the terminator beyond the buffer included.
 * @param device       the printer's address
 * @param journalType  its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @param buffer       gets the reply with a terminator; the caller answers for its size, see
 *                     getJournalStructD()
 * @param bufferSize   how many bytes are copied at most
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructD_str(int device, const char* journalType, const char* dateFrom,
                                      const char* dateTo, char* buffer, int bufferSize);

/**
 * Reads the extract D, by journal type and dates, into a result object.
 * @param device       the printer's address
 * @param journalType  the printer's letter of the journal, a single character
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @param result       the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructD_ResultObject(int device, char journalType, const char* dateFrom,
                                               const char* dateTo, ResultObject* result);

/**
 * Reads the extract D into a result object, as getJournalStructD_ResultObject(). Logged with a small `str` in
 * its name.
 * @param device       the printer's address
 * @param journalType  its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @param result       the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructD_Str_ResultObject(int device, const char* journalType, const char* dateFrom,
                                                   const char* dateTo, ResultObject* result);

/**
 * Reads the extract D, by journal type and dates, into a file, which is created when all of it has come.
 * @param device       the printer's address
 * @param journalType  its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @param fileName     the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int getJournalStructD_str_tofile(int device, const char* journalType, const char* dateFrom,
                                             const char* dateTo, const char* fileName);

/**
 * Reads the extract D1, by journal type and dates, into a buffer.
 * @param device       the printer's address
 * @param journalType  its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @param buffer       gets the reply exactly; one that is too short ends the process (see @ref replies)
 * @param bufferSize   its size in bytes
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructD1(int device, const char* journalType, const char* dateFrom,
                                   const char* dateTo, char* buffer, int bufferSize);

/**
 * Reads the extract D1, by journal type and dates, into a result object.
 * @param device       the printer's address
 * @param journalType  its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @param result       the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructD1_ResultObject(int device, const char* journalType, const char* dateFrom,
                                                const char* dateTo, ResultObject* result);

/**
 * Asks for the extract **D**, not D1, and puts it into a file, which is created when all of it has come: this
 * is meant.
 * @param device       the printer's address
 * @param journalType  its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param dateFrom     the first date in the printer's form, converted
 * @param dateTo       the last date, converted
 * @param fileName     the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int getJournalStructD1_tofile(int device, const char* journalType, const char* dateFrom,
                                          const char* dateTo, const char* fileName);

/**
 * Reads the extract Z, by numbers, into a buffer.
 * @param device      the printer's address
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @param buffer      gets the reply exactly; one that is too short ends the process (see @ref replies)
 * @param bufferSize  its size in bytes
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructZ(int device, int numberFrom, int numberTo, char* buffer, int bufferSize);

/**
 * Reads the extract Z, by numbers, into a result object.
 * @param device      the printer's address
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @param result      the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructZ_ResultObject(int device, int numberFrom, int numberTo,
                                               ResultObject* result);

/**
 * Reads the extract Z, by numbers, into a file, which is created when all of it has come.
 * @param device      the printer's address
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @param fileName    the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int getJournalStructZ_tofile(int device, int numberFrom, int numberTo, const char* fileName);

/**
 * Reads the extract Z1, by document type and numbers, into a buffer.
 * @param device      the printer's address
 * @param docType     its first character is the printer's letter of the document; an empty text sends 0x00
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @param buffer      gets the reply exactly; one that is too short ends the process (see @ref replies)
 * @param bufferSize  its size in bytes
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructZ1(int device, const char* docType, int numberFrom, int numberTo,
                                   char* buffer, int bufferSize);

/**
 * Reads the extract Z1, by document type and numbers, into a result object.
 * @param device      the printer's address
 * @param docType     its first character is the printer's letter of the document; an empty text sends 0x00
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @param result      the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructZ1_ResultObject(int device, const char* docType, int numberFrom, int numberTo,
                                                ResultObject* result);

/**
 * Reads the extract Z1, by document type and numbers, into a file, which is created before anything is sent
 * and stays, perhaps empty, after a failure. A failure is written to the call log too, with its code, also
 * while the log is off.
 * @param device      the printer's address
 * @param docType     its first character is the printer's letter of the document; an empty text sends 0x00
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @param fileName    the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int getJournalStructZ1_tofile(int device, const char* docType, int numberFrom, int numberTo,
                                          const char* fileName);

/**
 * Reads the extract U, one receipt, into a buffer.
 * @param device      the printer's address
 * @param paragonSn   the number of the receipt, converted
 * @param buffer      gets the reply exactly; one that is too short ends the process (see @ref replies)
 * @param bufferSize  its size in bytes
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructU(int device, const char* paragonSn, char* buffer, int bufferSize);

/**
 * Reads the extract U, one receipt, into a result object.
 * @param device     the printer's address
 * @param paragonSn  the number of the receipt, converted
 * @param result     the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getJournalStructU_ResultObject(int device, const char* paragonSn, ResultObject* result);

/**
 * Reads the extract U, one receipt, into a file, which is created when all of it has come.
 * @param device     the printer's address
 * @param paragonSn  the number of the receipt, converted
 * @param fileName   the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int getJournalStructU_tofile(int device, const char* paragonSn, const char* fileName);

/**
 * Reads a saved journal into a file, which is created before anything is sent and stays, perhaps empty, after
 * a failure.
 * @param device         the printer's address
 * @param journalType    the printer's letter of the journal, a single character
 * @param journalNumber  the printer's number of the journal
 * @param journalFile    the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int saveJournalToFile(int device, char journalType, int journalNumber, const char* journalFile);

/**
 * Reads a saved journal into a file, as saveJournalToFile().
 * @param device         the printer's address
 * @param journalType    its first character is the printer's letter of the journal; an empty text sends 0x00
 * @param journalNumber  the printer's number of the journal
 * @param journalFile    the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int saveJournalToFile_str(int device, const char* journalType, int journalNumber,
                                      const char* journalFile);

/** @} */

/**
 * @defgroup variables Reports: variables, last receipt, intervals
 * @{
 *
 * Short data out of the printer: its variables (counters, totals, states), the last receipt, extracts of the
 * fiscal memory. Which variables there are, and what stands in the replies, is the printer's. A till that
 * does not know whether a call was carried out asks with these functions.
 */

/**
 * Reads a variable, without the line end (0D 0A or 0A 0D) that the printer puts behind it; a reply of one or
 * two bytes counts as empty. Logged after success only, with the variable's text.
 * @param device        the printer's address
 * @param variableCode  the printer's name of the variable, converted
 * @param result        gets the text up to its first 0x00, with a terminating NUL; one that is too short ends
 *                      the process (see @ref replies)
 * @param resultSize    its size in bytes, the NUL included
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getVariable(int device, const char* variableCode, char* result, int resultSize);

/**
 * Reads a variable into a result object, otherwise as getVariable(). Logged under the name getVariable.
 * @param device        the printer's address
 * @param variableCode  the printer's name of the variable, converted
 * @param result        the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getVariableResultObject(int device, const char* variableCode, ResultObject* result);

/**
 * Reads a variable as getVariable() does and returns its text. It throws nothing, and tells no code.
 * @param device        the printer's address
 * @param variableCode  the printer's name of the variable, converted
 * @return the text, or `Error` on a failure and while no printer is open: the library's, valid until the next
 *         call of this function on the same thread
 */
TELVOFM_API const char* getVariableStr(int device, const char* variableCode);

/**
 * Reads the last receipt, each 0x00 of it as a blank. Logged after success only, with the whole receipt and
 * without the address.
 * @param device      the printer's address
 * @param buffer      gets at most `bufferSize` bytes, without a terminator; what is left of it stays as it
 *                    was
 * @param bufferSize  its size in bytes; with 0 or less nothing is copied. A receipt that is longer is cut
 *                    without a word
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getLastParagon(int device, char* buffer, int bufferSize);

/**
 * Reads the last receipt, 0x00 bytes included, into a result object. Logged after success only, with the
 * whole receipt and without the address.
 * @param device  the printer's address
 * @param result  the object that the reply goes into; with null nothing is sent
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getLastParagonResultObject(int device, ResultObject* result);

/**
 * Reads an extract of the fiscal memory by dates.
 * @param device      the printer's address
 * @param printType   the printer's type of extract
 * @param dateFrom    the first date in the printer's form, converted
 * @param dateTo      the last date, converted
 * @param result      gets the text up to its first 0x00, with a terminating NUL; one that is too short ends
 *                    the process (see @ref replies)
 * @param resultSize  its size in bytes, the NUL included
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getIntervalFPD(int device, int printType, const char* dateFrom, const char* dateTo,
                               char* result, int resultSize);

/**
 * Reads an extract of the fiscal memory by numbers.
 * @param device      the printer's address
 * @param printType   the printer's type of extract
 * @param numberFrom  the first number
 * @param numberTo    the last number
 * @param result      gets the text up to its first 0x00, with a terminating NUL; one that is too short ends
 *                    the process (see @ref replies)
 * @param resultSize  its size in bytes, the NUL included
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getIntervalFPC(int device, int printType, int numberFrom, int numberTo, char* result,
                               int resultSize);

/** @} */

/**
 * @defgroup backups Reports: backups and memory images
 * @{
 *
 * Passwords of this group are sent byte for byte and logged in clear; file names are not logged. The size and
 * the layout of a page and of an image are the printer's.
 */

/**
 * Tells the printer to restore from its backup.
 * @param device    the printer's address
 * @param password  byte for byte; logged in clear
 * @return a command's code, 0 when done
 */
TELVOFM_API int restoreBCKP(int device, const char* password);

/**
 * Reads a backup page into a buffer.
 * @param device      the printer's address
 * @param password    byte for byte; logged in clear
 * @param page        the printer's number of the page
 * @param buffer      gets the reply exactly; one that is too short ends the process (see @ref replies)
 * @param bufferSize  its size in bytes
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getBCKP(int device, const char* password, int page, char* buffer, int bufferSize);

/**
 * Reads a backup page into a file, which is created before anything is sent and stays, perhaps empty, after a
 * failure.
 * @param device    the printer's address
 * @param password  byte for byte; logged in clear
 * @param page      the printer's number of the page
 * @param fileName  the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int saveBCKP(int device, const char* password, int page, const char* fileName);

/**
 * Reads the memory image into a buffer.
 * @param device      the printer's address
 * @param password    byte for byte; logged in clear
 * @param buffer      gets the reply exactly; one that is too short ends the process (see @ref replies)
 * @param bufferSize  its size in bytes
 * @return a reply's code, 0 when done
 */
TELVOFM_API int getRAMMP(int device, const char* password, char* buffer, int bufferSize);

/**
 * Reads the memory image into a file, which is created before anything is sent and stays, perhaps empty,
 * after a failure.
 * @param device    the printer's address
 * @param password  byte for byte; logged in clear
 * @param fileName  the file, in the encoding of the system's narrow file names
 * @return a file's code, 0 when done
 */
TELVOFM_API int saveRAMMP(int device, const char* password, const char* fileName);

/** @} */

/**
 * @defgroup archive Reports: journal archive
 * @{
 *
 * The journal archives that the printer keeps under a name; which names there are is the printer's, and it
 * refuses an archive that is unknown or damaged. Nothing is read back. All texts of this group are sent byte
 * for byte, also on serial links.
 */

/**
 * Lets the printer validate an archive.
 * @param device         the printer's address
 * @param archiveDbName  the name of the archive, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int validateArchiveDb(int device, const char* archiveDbName);

/**
 * Prints an extract of the fiscal memory by dates from an archive.
 * @param device       the printer's address
 * @param printType    the printer's type of extract
 * @param dateFrom     the first date in the printer's form, byte for byte
 * @param dateTo       the last date, byte for byte
 * @param journalType  a text that is sent whole, byte for byte, where printJournalStructDArchive() names the
 *                     archive
 * @return a command's code, 0 when done
 */
TELVOFM_API int printIntervalFPDArchive(int device, int printType, const char* dateFrom, const char* dateTo,
                                        const char* journalType);

/**
 * Prints one receipt from an archive.
 * @param device       the printer's address
 * @param paragonSn    the number of the receipt, byte for byte
 * @param journalType  a text that is sent whole, byte for byte, where printJournalStructDArchive() names the
 *                     archive
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournalStructUArchive(int device, const char* paragonSn, const char* journalType);

/**
 * Prints the extract D, by journal type and dates, from an archive.
 * @param device         the printer's address
 * @param journalType    the printer's letter of the journal, a single character
 * @param dateFrom       the first date in the printer's form, byte for byte
 * @param dateTo         the last date, byte for byte
 * @param archiveDbName  the name of the archive, byte for byte
 * @return a command's code, 0 when done
 */
TELVOFM_API int printJournalStructDArchive(int device, char journalType, const char* dateFrom,
                                           const char* dateTo, const char* archiveDbName);

/** @} */

/**
 * @defgroup graphics Graphics
 * @{
 *
 * Logos take two steps: a prepare function converts a monochrome bitmap file into the printer's layouts and
 * keeps them with the session under an index; a load function uploads them. An index keeps the picture that
 * was prepared first; closeFM() forgets all. Which picture numbers and spacings the printer takes is the
 * printer's.
 *
 * Uploads go out in blocks of at most 256 bytes. After a failure in an upload the printer may have accepted
 * the command and a part of the data; nothing takes them back.
 */

/**
 * Loads a BMP file of one bit per pixel in black and white; black prints as dots. Nothing is sent. Writes
 * `Path: ` with the name and, when the file is a bitmap, `OK` to standard output.
 * @param imageIndex  the index that the picture is kept under; one that is taken keeps its picture
 * @param fileName    the file, in the encoding of the system's narrow file names
 * @return 0; -1 without an open printer, -10104 when the file is not monochrome, -10201 when it is no bitmap
 *         or cannot be read
 */
TELVOFM_API int prepareGraphicHeader(int imageIndex, const char* fileName);

/**
 * Loads a BMP file as prepareGraphicHeader(), also the other way round.
 * @param imageIndex  the index that the picture is kept under; one that is taken keeps its picture
 * @param fileName    the file, in the encoding of the system's narrow file names
 * @param inverse     with 0 black prints as dots, with any other number white and the padding do
 * @return 0; -1 without an open printer, -10104 when the file is not monochrome, -10201 when it is no bitmap
 *         or cannot be read
 */
TELVOFM_API int prepareGraphicHeader_inverse(int imageIndex, const char* fileName, int inverse);

/**
 * Uploads a prepared picture row by row.
 * @param device       the printer's address
 * @param imageNumber  the index of the prepared picture; without one only the command is sent
 * @param leftSpacing  the printer's spacing at the left
 * @return an upload's code, 0 when done
 */
TELVOFM_API int loadGHMMC(int device, int imageNumber, int leftSpacing);

/**
 * Uploads a prepared picture in bands of eight rows.
 * @param device       the printer's address
 * @param imageNumber  the index of the prepared picture; without one only the command is sent
 * @param leftSpacing  the printer's spacing at the left
 * @return an upload's code, 0 when done
 */
TELVOFM_API int loadGHMMC1(int device, int imageNumber, int leftSpacing);

/**
 * Uploads the pictures 1 to `imageCount` column by column. With more than 6 **nothing is sent, and 0 comes
 * back**.
 * @param device               the printer's address
 * @param imageCount           how many, at most 6
 * @param leftSpacing1         the printer's spacing at the left of picture 1; below 10 a `0` is put in front
 * @param leftSpacing2         the printer's spacing at the left of picture 2; below 10 a `0` is put in front
 * @param leftSpacing3         the printer's spacing at the left of picture 3; below 10 a `0` is put in front
 * @param leftSpacing4         the printer's spacing at the left of picture 4; below 10 a `0` is put in front
 * @param leftSpacing5         the printer's spacing at the left of picture 5; below 10 a `0` is put in front
 * @param leftSpacing6         the printer's spacing at the left of picture 6; below 10 a `0` is put in front
 * @param printLogoAfterPrint  sent as `0` for 0 and as `1` for any other number
 * @return an upload's code, 0 when done
 */
TELVOFM_API int loadGHNV(int device, int imageCount, int leftSpacing1, int leftSpacing2, int leftSpacing3,
                         int leftSpacing4, int leftSpacing5, int leftSpacing6, int printLogoAfterPrint);

/**
 * Uploads the pictures 1 to `imageCount` column by column, as loadGHNV(), without a limit to their number.
 * @param device               the printer's address
 * @param imageCount           how many
 * @param leftSpacing1         the printer's spacing at the left of picture 1; below 10 a `0` is put in front
 * @param leftSpacing2         the printer's spacing at the left of picture 2; below 10 a `0` is put in front
 * @param leftSpacing3         the printer's spacing at the left of picture 3; below 10 a `0` is put in front
 * @param leftSpacing4         the printer's spacing at the left of picture 4; below 10 a `0` is put in front
 * @param leftSpacing5         the printer's spacing at the left of picture 5; below 10 a `0` is put in front
 * @param leftSpacing6         the printer's spacing at the left of picture 6; below 10 a `0` is put in front
 * @param printLogoAfterPrint  sent as `0` for 0 and as `1` for any other number
 * @return an upload's code, 0 when done
 */
TELVOFM_API int loadGHNV2(int device, int imageCount, int leftSpacing1, int leftSpacing2, int leftSpacing3,
                          int leftSpacing4, int leftSpacing5, int leftSpacing6, int printLogoAfterPrint);

/**
 * Uploads the picture that was prepared under index 9, column by column. Without one nothing is uploaded, and
 * a picture that is prepared under 9 afterwards is taken neither by this function nor by loadGHNV2() any
 * more.
 * @param device               the printer's address
 * @param leftSpacing          the printer's spacing at the left
 * @param printLogoAfterPrint  sent as `0` for 0 and as `1` for any other number
 * @return an upload's code, 0 when done
 */
TELVOFM_API int loadRAMBitMap(int device, int leftSpacing, int printLogoAfterPrint);

/**
 * Prints a picture whose bytes the caller has: uploads them as they are, and then four 0x00 bytes. The call
 * log shows the number of bytes and not the bytes.
 * @param device             the printer's address
 * @param printType          the printer's number
 * @param graphicIndex       the printer's number of the picture
 * @param imageData          the bytes, which the call copies; null uploads none
 * @param imageDataByteSize  their number; with 0 or less none are uploaded
 * @return an upload's code, 0 when done
 */
TELVOFM_API int printGraphic(int device, int printType, int graphicIndex, const void* imageData,
                             int imageDataByteSize);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
