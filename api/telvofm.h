/*
 * TelvoFM: drives a fiscal cash-register printer over a serial port or TCP.
 *
 *     openFM("192.168.1.10:9100");
 *     sellingDayBegin(1, 0);
 *     paragonBegin(1, 0, 1, 0, 0, 1, 0);
 *     itemSale(1, 0, "Chlieb", 12.50, 'A', 1.5, 8.33, "ks");
 *     payment(1, 0, 1, 12.50, 12.50, 0, "Hotovost");
 *     paragonEnd(1, 0, 0);
 *     closeFM();
 *
 * 1. One printer at a time. The open functions connect; every other function works on the connected printer.
 * 2. Each call is exactly one exchange with the printer. The library keeps no receipt and no totals, and
 *    checks almost no argument: values go to the printer, which judges them.
 * 3. Texts are NUL-terminated byte strings in Windows-1250. On serial links most are converted to code page
 *    852 on the way out and back on the way in; each function says which are not. On TCP links nothing is
 *    converted. A null text counts as an empty one. A call copies its texts when it begins.
 * 4. `device` is the printer's address; only its low byte is sent.
 * 5. Amounts come in up to three variants: the plain function takes `double`, `_int` takes whole numbers in
 *    fixed units (money in hundredths, quantities in thousandths, unit prices and exchange rates in
 *    ten-thousandths), `_str` takes text that is sent unchanged. Where a plain function takes a `char`, the
 *    `_str` one takes a text and uses its first character; an empty text sends the byte 0x00.
 * 6. What comes back, unless a function says otherwise: 0, or the code of the failure.
 *
 *        0           done; also a refusal whose error byte is 0: the printer has not carried the command
 *                    out, and buffers, counts and result objects are as they were
 *        1 ... 255   the printer's own error code
 *        64          also: serial, the printer is silent for 15 s although it holds clear-to-send on
 *        -1          no printer is open; for the open functions: it could not be opened
 *        -10000      a run-time failure inside the exchange, memory exhaustion above all
 *        -10001      serial: an uploaded block was refused three times; TCP: a run-time failure in a command
 *        -10002      a reply was damaged three times, or a byte came that the protocol does not allow there
 *        -10103      serial: the port is not open, or clear-to-send is off when a write begins
 *        -10104      the bitmap file is not monochrome
 *        -10200      serial: the port reported error 2
 *        -10201      any other failure of the link or of a file; TCP: the printer closed the connection
 *        -10202      the printer did not answer in time
 *
 *    "The usual codes" below are those of the link in use. After a failure the link stays open and the next
 *    call may succeed.
 * 7. Functions may be called from several threads; each exchange is whole. rawRead and rawWrite do not wait
 *    for an exchange of another thread to end.
 * 8. Unless the call log is off, a call writes one line to it before anything is sent (see setLogginOn),
 *    unless its function says otherwise. Passwords appear as "*****" unless a function says that it writes
 *    them in clear.
 * 9. A `bool` is one byte: 0 is false, and any other value that a host language has for true is true.
 * 10. Memory that a function returns stays the library's, except result objects, which the caller destroys.
 *
 * The spellings of some names are unusual; they are part of the interface.
 */
#ifndef TELVOFM_H
#define TELVOFM_H

#include <stdbool.h>
#include <stdint.h>

/* The version of this library; getVersion returns another number, that of the interface. */
#define TELVOFM_VERSION_MAJOR 1
#define TELVOFM_VERSION_MINOR 0
#define TELVOFM_VERSION_PATCH 0
#define TELVOFM_VERSION "1.0.0"

/* How the functions are declared; a program that needs another way defines it before. */
#ifndef TELVOFM_API
#if defined(_WIN32)
#if defined(TELVOFM_BUILDING)
#define TELVOFM_API
#else
#define TELVOFM_API __declspec(dllimport)
#endif
#else
#define TELVOFM_API __attribute__((visibility("default")))
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* A byte string of any length that the library fills and the caller reads; see createResultObject. */
typedef struct ResultObject ResultObject;

/*
 * A `bool` argument. The library itself takes it as a plain byte: what a compiler knows to be a bool it takes
 * to be 0 or 1, and callers in other languages pass other numbers.
 */
#if defined(TELVOFM_BUILDING)
typedef unsigned char TelvofmBool;
#else
typedef bool TelvofmBool;
#endif

/* ---- Session ---- */

/* Returns 106, the version of this interface, whether a printer is open or not. Not logged. */
TELVOFM_API int getVersion(void);

/*
 * Connects to the printer. A name that begins with "COM" or "\\.\COM" (in this case of letters) is a serial
 * port, opened with 57600 baud, 8 data bits, no parity, one stop bit; on POSIX systems COM<n> is
 * /dev/ttyS<n-1>, and COM followed by an absolute path is that path. Any other name is a host, or a host and
 * a port joined by a colon; without a port it is 64000. Writes "host: ... port: ..." to standard output for a
 * TCP link. Returns 0, or -1 when the connection could not be made. After -1 closeFM is still due. A second
 * open without closeFM leaves the first connection open and out of reach; only the same serial port, under
 * any of its names, is closed first.
 */
TELVOFM_API int openFM(const char* portName);

/*
 * As openFM for a serial port, with 57600 or 115200 baud. With any other rate no port is opened: the link
 * that is already held is opened again for a new session, and without one the result is -1. Returns -1 for a
 * name that is no serial port. Logged under the name of openFM, without the rate.
 */
TELVOFM_API int openFMBaud(const char* portName, uint32_t baud);

/*
 * As openFM for a serial port at 57600 baud with the given stop bits: 1, 2, or 15 for one and a half; any
 * other number means one. Windows' drivers refuse one and a half with 8 data bits: there 15 returns -1; Linux
 * sends two instead. Returns -1 for a name that is no serial port.
 */
TELVOFM_API int openFMStopBit(const char* portName, uint32_t stopBits);

/*
 * Closes the connection and forgets the session's settings and pictures. Does nothing when none is open.
 * Calls of other threads that wait for the printer end with the step that they wait in (3 s over TCP, 15 s on
 * serial links) and return -10201, on serial links -10103; an opening whose host name is being resolved is
 * waited for. It is due before the library is unloaded: FreeLibrary alone leaves the connection open until
 * the program ends.
 */
TELVOFM_API void closeFM(void);

/* Stores a time in milliseconds with the current link. No exchange reads it. Not logged. */
TELVOFM_API void setTcpTimeout(int64_t timeoutMs);

/*
 * Reads up to `count` bytes as they come from the printer into `buffer`, until nothing more comes in time: on
 * TCP each byte may take 3 s and, after a probe, 3 s more; on serial links only bytes already received are
 * taken. Returns their number, 0 when `marker` is null, -1 on a failure, without a link, or when `buffer` is
 * null. Not logged.
 */
TELVOFM_API int64_t rawRead(unsigned char* buffer, int64_t count, const void* marker);

/*
 * Writes `count` bytes to the printer as they are, without a checksum byte. Returns their number, or -1 on a
 * failure, without a link, when `bytes` is null or `count` negative. Not logged.
 */
TELVOFM_API int64_t rawWrite(const unsigned char* bytes, int64_t count);

/*
 * Sends `data`, up to its terminating NUL, as a complete request and waits for the printer's acceptance. Only
 * requests without fields can be sent this way, because every field ends with 0x00. Returns 0 or the usual
 * codes.
 */
TELVOFM_API int sendUnspecifiedData(const char* data);

/* ---- Call log ---- */

/*
 * Switches the call log on and makes `path` its file; the file is opened, appended to and closed for every
 * line. From the start the log is on and writes to "fmlog.txt" in the current directory. A file that cannot
 * be written loses its lines without any other effect. Not logged.
 */
TELVOFM_API void setLogginOn(const char* path);

/* Switches the call log off. Not logged. */
TELVOFM_API void setLogginOff(void);

/* ---- Result objects ---- */

/* Returns a new, empty result object that the caller destroys, or null when memory runs out. Not logged. */
TELVOFM_API ResultObject* createResultObject(void);

/* Destroys a result object; a null pointer is ignored. Not logged. */
TELVOFM_API void destroyResultObject(ResultObject* object);

/* The number of bytes held (the low 32 bits of it). The object must not be null. Not logged. */
TELVOFM_API int getResultObjectLength(const ResultObject* object);

/*
 * The bytes held, with a 0x00 behind the last one. They may contain 0x00 themselves. The pointer is valid
 * until the object is filled again or destroyed. The object must not be null. Not logged.
 */
TELVOFM_API const char* getResultObjectString(const ResultObject* object);

/* ---- Raw log ---- */

/*
 * Switches the raw log on: every byte on the link, in hexadecimal, "C: " for sent and "S: " for received
 * ones. The file at `path` is emptied; an empty path goes on with the file of an earlier call, which keeps
 * what it holds, and without one nothing changes. Passwords and receipts appear in it as they pass the link,
 * and stay there. Not logged.
 */
TELVOFM_API void setRawLogginOn(const char* path);

/* Switches the raw log off and keeps its path. Not logged. */
TELVOFM_API void seRawLogginOff(void);

/* ---- Receipt: lifecycle ---- */

/*
 * Opens a receipt. The meaning of the numbers is the printer's; they are sent as given. Returns 0 or the
 * usual codes; the printer refuses a receipt while another one is open.
 */
TELVOFM_API int paragonBegin(int device, int row, int saleType, int commType, int paragonType,
                             int recapitulation, int graphicsHeader);

/* Closes the receipt. Returns 0 or the usual codes. */
TELVOFM_API int paragonEnd(int device, int row, int graphicsHeader);

/* Opens the selling day; `deviceNumber` is the printer's address. Returns 0 or the usual codes. */
TELVOFM_API int sellingDayBegin(int deviceNumber, int saleMode);

/* Cancels the open receipt; `description` is printed and may have any length. Returns 0 or the usual codes.
 */
TELVOFM_API int destroyParagon(int device, int row, const char* description);

/* Prints the last receipt again. Returns 0 or the usual codes. */
TELVOFM_API int repeatParagon(int device);

/* Cancels the running print job. Returns 0 or the usual codes. */
TELVOFM_API int printJobCancel(int device);

/* Confirms the printer's note. Returns 0 or the usual codes. */
TELVOFM_API int confirmNote(int device);

/* ---- Receipt: items ---- */

/*
 * The item functions add a line to the open receipt.
 *   commodityName   any length; blanks fill it up to 40 bytes while setAutoTwoLineItem is on
 *   totalPrice      sent with 2 decimals; `_int`: hundredths; `_str`: sent as given
 *   vat             the letter of the VAT rate
 *   amount          the quantity, sent with 3 decimals; `_int`: thousandths; `_str`: sent as given
 *   unitPrice       sent with 2 decimals; `_int`: ten-thousandths; `_str`: sent as given
 *   unit            sent as exactly 3 bytes: filled with blanks or cut
 *   receiptNumber   of voids and returns: the receipt that they refer to
 * All return 0 or the usual codes.
 */

/* A sale, amounts as numbers. */
TELVOFM_API int itemSale(int device, int row, const char* commodityName, double totalPrice, char vat,
                         double amount, double unitPrice, const char* unit);

/* A sale, amounts as whole numbers in fixed units. */
TELVOFM_API int itemSale_int(int device, int row, const char* commodityName, int totalPrice, const char* vat,
                             int amount, int unitPrice, const char* unit);

/* A sale, amounts as text. */
TELVOFM_API int itemSale_str(int device, int row, const char* commodityName, const char* totalPrice,
                             const char* vat, const char* amount, const char* unitPrice, const char* unit);

/* The void of an earlier line of this receipt, amounts as numbers. */
TELVOFM_API int itemVoid(int device, int row, const char* commodityName, double totalPrice, char vat,
                         double amount, double unitPrice, const char* unit, const char* receiptNumber);

/* The void of an earlier line of this receipt, amounts as whole numbers in fixed units. */
TELVOFM_API int itemVoid_int(int device, int row, const char* commodityName, int totalPrice, const char* vat,
                             int amount, int unitPrice, const char* unit, const char* receiptNumber);

/* The void of an earlier line of this receipt, amounts as text. Logged under the name itemVoid_int. */
TELVOFM_API int itemVoid_str(int device, int row, const char* commodityName, const char* totalPrice,
                             const char* vat, const char* amount, const char* unitPrice, const char* unit,
                             const char* receiptNumber);

/* Goods returned from an earlier receipt, amounts as numbers. */
TELVOFM_API int itemReturn(int device, int row, const char* commodityName, double totalPrice, char vat,
                           double amount, double unitPrice, const char* unit, const char* receiptNumber);

/* Goods returned from an earlier receipt, amounts as whole numbers in fixed units. */
TELVOFM_API int itemReturn_int(int device, int row, const char* commodityName, int totalPrice,
                               const char* vat, int amount, int unitPrice, const char* unit,
                               const char* receiptNumber);

/* Goods returned from an earlier receipt, amounts as text. */
TELVOFM_API int itemReturn_str(int device, int row, const char* commodityName, const char* totalPrice,
                               const char* vat, const char* amount, const char* unitPrice, const char* unit,
                               const char* receiptNumber);

/* A negative item, amounts as numbers. */
TELVOFM_API int itemNegative(int device, int row, const char* commodityName, double totalPrice, char vat,
                             double amount, double unitPrice, const char* unit);

/* A negative item, amounts as whole numbers in fixed units. */
TELVOFM_API int itemNegative_int(int device, int row, const char* commodityName, int totalPrice,
                                 const char* vat, int amount, int unitPrice, const char* unit);

/* A negative item, amounts as text. Logged under the name itemNegative_int. */
TELVOFM_API int itemNegative_str(int device, int row, const char* commodityName, const char* totalPrice,
                                 const char* vat, const char* amount, const char* unitPrice,
                                 const char* unit);

/*
 * While on, item names shorter than 40 bytes are filled with blanks to 40. Belongs to the open session and
 * begins as off; without an open session the call does nothing. Not logged.
 */
TELVOFM_API void setAutoTwoLineItem(TelvofmBool on);

/* Whether item names are filled up; false without an open session. Not logged. */
TELVOFM_API bool isAutoTwoLineItem(void);

/* ---- Receipt: discounts ---- */

/*
 * Discounts on the last item line or on the subtotal of the open receipt, and the subtotal itself.
 *   description         any length
 *   operationType       the kind of operation, by the printer's number for it
 *   discountValue       sent with 2 decimals; `_int`: hundredths; `_str`: sent as given
 *   discountTotalValue  sent as discountValue is
 *   vat                 the letter of the VAT rate; a blank is left out of the item discounts, whose field is
 *                       then empty, but is sent with the subtotal discounts
 * The library computes nothing: what the values mean depends on the operation type and is the printer's. All
 * return 0 or the usual codes.
 */

/* A discount on an item, the value as a number. */
TELVOFM_API int itemDiscount(int device, int row, const char* description, int operationType,
                             double discountValue, char vat);

/*
 * A discount on an item, the value in hundredths; the first character of `vat` counts. Writes two lines to
 * the call log, the first with its name alone.
 */
TELVOFM_API int itemDiscount_int(int device, int row, const char* description, int operationType,
                                 int discountValue, const char* vat);

/* A discount on an item, the value as text. Logged under the name itemDiscount. */
TELVOFM_API int itemDiscount_str(int device, int row, const char* description, int operationType,
                                 const char* discountValue, const char* vat);

/* A discount on an item with its total, values as numbers. */
TELVOFM_API int itemDiscount2(int device, int row, const char* description, int operationType,
                              double discountValue, char vat, double discountTotalValue);

/* A discount on an item with its total, values in hundredths; the first character of `vat` counts. */
TELVOFM_API int itemDiscount2_int(int device, int row, const char* description, int operationType,
                                  int discountValue, const char* vat, int discountTotalValue);

/* A discount on an item with its total, values as text. Logged under the name itemDiscount2. */
TELVOFM_API int itemDiscount2_str(int device, int row, const char* description, int operationType,
                                  const char* discountValue, const char* vat, const char* discountTotalValue);

/* The subtotal of the open receipt. */
TELVOFM_API int subTotal(int device, int row, const char* description, int operationType);

/* A discount on the subtotal, the value as a number. */
TELVOFM_API int subTotalDiscount(int device, int row, const char* description, int operationType,
                                 double discountValue, char vat);

/* A discount on the subtotal, the value in hundredths; `vat` stays a `char` here. */
TELVOFM_API int subTotalDiscount_int(int device, int row, const char* description, int operationType,
                                     int discountValue, char vat);

/* A discount on the subtotal, the value as text. Logged under the name subTotalDiscount. */
TELVOFM_API int subTotalDiscount_str(int device, int row, const char* description, int operationType,
                                     const char* discountValue, const char* vat);

/* A discount on the subtotal with its total, values as numbers. `vat` comes last, unlike in itemDiscount2. */
TELVOFM_API int subTotalDiscount2(int device, int row, const char* description, int operationType,
                                  double discountValue, double discountTotalValue, char vat);

/* A discount on the subtotal with its total, values in hundredths; `vat` stays a `char` here. */
TELVOFM_API int subTotalDiscount2_int(int device, int row, const char* description, int operationType,
                                      int discountValue, int discountTotalValue, char vat);

/* A discount on the subtotal with its total, values as text. Logged under the name subTotalDiscount2. */
TELVOFM_API int subTotalDiscount2_str(int device, int row, const char* description, int operationType,
                                      const char* discountValue, const char* discountTotalValue,
                                      const char* vat);

/* ---- Receipt: payments ---- */

/*
 * The payment functions settle the open receipt.
 *   paymentNumber     the payment type, by its number in the printer
 *   total             sent with 2 decimals
 *   payedAmount       sent with 2 decimals, exactly zero as "0"
 *   exchangeRate      sent with 4 decimals, exactly zero as "0"; payment1 puts "+" in front in every case
 *   description       sent as exactly 10 bytes: filled with blanks or cut
 *   totalPayedAmount  of payment2: paid so far, sent as payedAmount is
 * `_int` takes hundredths, and ten-thousandths for the exchange rate; `_str` sends its texts as given,
 * without the rule for zero. All return 0 or the usual codes.
 */

/* A payment, amounts as numbers. */
TELVOFM_API int payment(int device, int row, int paymentNumber, double total, double payedAmount,
                        double exchangeRate, const char* description);

/* A payment, amounts as whole numbers. */
TELVOFM_API int payment_int(int device, int row, int paymentNumber, int total, int payedAmount,
                            int exchangeRate, const char* description);

/* A payment, amounts as text. */
TELVOFM_API int payment_str(int device, int row, int paymentNumber, const char* total,
                            const char* payedAmount, const char* exchangeRate, const char* description);

/* A payment with a signed exchange rate, amounts as numbers. */
TELVOFM_API int payment1(int device, int row, int paymentNumber, double total, double payedAmount,
                         double exchangeRate, const char* description);

/* A payment with a signed exchange rate, amounts as whole numbers. */
TELVOFM_API int payment1_int(int device, int row, int paymentNumber, int total, int payedAmount,
                             int exchangeRate, const char* description);

/* A payment with the total paid so far, amounts as numbers. */
TELVOFM_API int payment2(int device, int row, int paymentNumber, double total, double payedAmount,
                         double exchangeRate, const char* description, double totalPayedAmount);

/* A payment with the total paid so far, amounts as whole numbers. */
TELVOFM_API int payment2_int(int device, int row, int paymentNumber, int total, int payedAmount,
                             int exchangeRate, const char* description, int totalPayedAmount);

/*
 * Puts money into the drawer or takes it out, as `operationType` tells the printer. `description` may have
 * any length; `amount` is sent with 2 decimals. Returns 0 or the usual codes.
 */
TELVOFM_API int depositeInDrawer(int device, int row, const char* description, int operationType,
                                 double amount, int paymentNumber);

/* As depositeInDrawer, the amount in hundredths. */
TELVOFM_API int depositeInDrawer_int(int device, int row, const char* description, int operationType,
                                     int amount, int paymentNumber);

/* As depositeInDrawer, the amount as text, sent as given. Logged under the name depositeInDrawer_int. */
TELVOFM_API int depositeInDrawer_str(int device, int row, const char* description, int operationType,
                                     const char* amount, int paymentNumber);

/* ---- Receipt: extras ---- */

/*
 * What a receipt carries beside items and payments. The values and the meaning of the types are the
 * printer's. Only `number` of setClientID and the titles are converted on serial links; every other text of
 * this group is sent byte for byte on every link. All return 0 or the usual codes.
 */

/* Identifies the client; `number` may have any length and is converted on serial links. */
TELVOFM_API int setClientID(int device, const char* number, int type);

/* Refers to a receipt issued earlier, by its number and its date and time as text. */
TELVOFM_API int printIssuedParagon(int device, int orderNumber, const char* dateTime);

/* Sets the number of the invoice that the receipt pays. */
TELVOFM_API int setInvoiceNumber(int device, const char* invoiceNumber);

/*
 * Redeems a voucher on the receipt. `title` is converted on serial links, `voucherNumber` is not; `amount`
 * (the quantity) and `price` are sent with 2 decimals; `vat` is the letter of the VAT rate, sent also when it
 * is a blank.
 */
TELVOFM_API int redeemVoucher(int device, const char* title, double amount, char vat, double price,
                              const char* voucherNumber);

/* As redeemVoucher, amount and price as text, sent as given. Logged under the name redeemVoucher. */
TELVOFM_API int redeemVoucher_str(int device, const char* title, const char* amount, const char* vat,
                                  const char* price, const char* voucherNumber);

/* Deducts a down payment on the receipt; the arguments are those of redeemVoucher. */
TELVOFM_API int deductDownPayment(int device, const char* title, double amount, char vat, double price);

/* As deductDownPayment, amount and price as text, sent as given. Logged under the name deductDownPayment. */
TELVOFM_API int deductDownPayment_str(int device, const char* title, const char* amount, const char* vat,
                                      const char* price);

/*
 * Asks for receipt identifiers: `inputType` tells what `input` is. The reply, converted on serial links, is
 * copied into `buffer` up to its first 0x00, with a terminating NUL; `bufferSize` is the size of the buffer
 * in bytes. A reply that does not fit with its NUL empties the buffer and raises the invalid-parameter
 * failure of the C runtime, which by default ends the process: give a buffer for the longest reply, or use
 * getParagonIDs_ResultObject. On a failure that comes back as a code the buffer keeps its contents.
 */
TELVOFM_API int getParagonIDs(int device, char inputType, const char* input, char* buffer, int bufferSize);

/* As getParagonIDs; the first character of `inputType` counts. Logged under the name getParagonIDs. */
TELVOFM_API int getParagonIDs_str(int device, const char* inputType, const char* input, char* buffer,
                                  int bufferSize);

/*
 * As getParagonIDs, the whole reply into a result object in place of what it held. On a failure the object
 * keeps its contents; with a null object nothing is sent and -1 comes back.
 */
TELVOFM_API int getParagonIDs_ResultObject(int device, char inputType, const char* input,
                                           ResultObject* result);

/* As getParagonIDs_ResultObject; the first character of `inputType` counts. */
TELVOFM_API int getParagonIDs_str_ResultObject(int device, const char* inputType, const char* input,
                                               ResultObject* result);

/* Sets the transaction's identifier. */
TELVOFM_API int setTransactionID(int device, const char* internalCode);

/* Sets the V48 value. Unlike elsewhere the password is written to the call log in clear. */
TELVOFM_API int setV48(int device, const char* password, char v48);

/* As setV48; the first character of `v48` counts. Logged under the name setV48, the password in clear. */
TELVOFM_API int setV48_str(int device, const char* password, const char* v48);

/* Chooses the description of items with a zero VAT rate. */
TELVOFM_API int Popis0DPH(int device, char type);

/* As Popis0DPH; the first character of `type` counts. Logged under the name Popis0DPH. */
TELVOFM_API int Popis0DPH_str(int device, const char* type);

/* Identifies the seller. Unlike the client's, the seller's `number` is sent byte for byte. */
TELVOFM_API int setSellerID(int device, const char* number, char type);

/* As setSellerID; the first character of `type` counts. Logged under the name setSellerID. */
TELVOFM_API int setSellerID_str(int device, const char* number, const char* type);

/* Corrects a document that carries the given error code. */
TELVOFM_API int opravaDokladu(int device, const char* errCode);

/* Has the printer synchronise with PPEKK. */
TELVOFM_API int synchronizationToPPEKK(int device);

/* ---- Configuration: VAT rates ---- */

/*
 * The VAT functions program the printer's table of rates.
 *   password         judged by the printer; "*****" in the call log
 *   vat              the letter of the rate, sent as it stands
 *   vatValue...      the rate in percent; fractions are cut off: 19.99 is sent as 19
 *   reverseConstant  see the functions
 *   date             text in the printer's form
 * Numbers beyond the range of `int` are sent as the smallest `int`. Texts are converted on serial links. All
 * return 0 or the usual codes.
 */

/*
 * Sets one rate. `reverseConstant` keeps its fraction, with six significant digits; a negative one is left
 * out, so that its field is empty.
 */
TELVOFM_API int setVAT(int device, const char* password, char vat, double vatValue, double reverseConstant);

/* As setVAT; the first character of `vat` counts. Logged under the name setVAT. */
TELVOFM_API int setVAT_str(int device, const char* password, const char* vat, double vatValue,
                           double reverseConstant);

/*
 * As setVAT, rate and reverse constant in hundredths; the first character of `vat` counts. The hundredths of
 * the rate are cut off, those of the reverse constant are kept: 2050 is sent as 20, 1667 as 16.67.
 */
TELVOFM_API int setVAT_int(int device, const char* password, const char* vat, int vatValue,
                           int reverseConstant);

/*
 * Replaces the table by the rates A to E. Fractions are cut off everywhere, and negative numbers are sent,
 * also for the reverse constants, unlike in setVAT.
 */
TELVOFM_API int setAllVats(int device, const char* password, double vatValueA, double reverseConstantA,
                           double vatValueB, double reverseConstantB, double vatValueC,
                           double reverseConstantC, double vatValueD, double reverseConstantD,
                           double vatValueE, double reverseConstantE);

/*
 * Replaces the table by the rates A to H from a date on; numbers as in setAllVats. Logged under the name
 * setAllVats; the pairs F, G and H appear there with the labels of E.
 */
TELVOFM_API int setAllVats2(int device, const char* password, double vatValueA, double reverseConstantA,
                            double vatValueB, double reverseConstantB, double vatValueC,
                            double reverseConstantC, double vatValueD, double reverseConstantD,
                            double vatValueE, double reverseConstantE, double vatValueF,
                            double reverseConstantF, double vatValueG, double reverseConstantG,
                            double vatValueH, double reverseConstantH, const char* date);

/* As setAllVats2, in whole numbers that are sent unchanged (percents, not hundredths); logged as it is. */
TELVOFM_API int setAllVats3(int device, const char* password, int vatValueA, int reverseConstantA,
                            int vatValueB, int reverseConstantB, int vatValueC, int reverseConstantC,
                            int vatValueD, int reverseConstantD, int vatValueE, int reverseConstantE,
                            int vatValueF, int reverseConstantF, int vatValueG, int reverseConstantG,
                            int vatValueH, int reverseConstantH, const char* date);

/* ---- Configuration: setup ---- */

/*
 * The printer's standing settings. Numbers are sent as given, texts may have any length, may be empty, and
 * are converted on serial links, passwords too; passwords appear as "*****" in the call log. What the numbers
 * mean is the printer's. All return 0 or the usual codes.
 */

/* Sets the escape sequence of the customer display. */
TELVOFM_API int setEscapeSequence(int device, const char* sequence);

/*
 * Sets a payment type: `minCurrency`, its smallest unit, is sent with 2 decimals; `overPay` tells whether
 * more than the total may be paid. On the wire the digit is inverted: "0" allows it, "1" does not.
 */
TELVOFM_API int setPaymentType(int device, int paymentTypeNumber, double minCurrency, TelvofmBool overPay);

/* As setPaymentType, minCurrency in hundredths; only an `overPay` of exactly 1 allows over-payment. */
TELVOFM_API int setPaymentType_int(int device, int paymentTypeNumber, int minCurrency, int overPay);

/* As setPaymentType, with a name for the payment type. */
TELVOFM_API int setPaymentType2(int device, const char* paymentTypeName, int paymentTypeNumber,
                                double minCurrency, TelvofmBool overPay);

/* As setPaymentType2, minCurrency in hundredths; only an `overPay` of exactly 1 allows over-payment. */
TELVOFM_API int setPaymentType2_int(int device, const char* paymentTypeName, int paymentTypeNumber,
                                    int minCurrency, int overPay);

/* Replaces the printer's password. */
TELVOFM_API int setPassword(int device, const char* oldPassword, const char* newPassword);

/* Tells the printer which printer mechanism it drives, and its format. */
TELVOFM_API int setPrinterType(int device, const char* servicePassword, int printerType, int printFormat);

/* Sets a numbered parameter. */
TELVOFM_API int setParameter(int device, const char* password, int paramNumber, int paramValue);

/* Sets one row of the receipt's header. */
TELVOFM_API int setHeader(int device, const char* password, int rowNumber, const char* text);

/* Sets the additional header line. */
TELVOFM_API int setAdditionalHeader(int device, const char* text);

/* Sets the additional footer line. */
TELVOFM_API int setAdditionalFooter(int device, const char* text);

/* Sets the super footer. */
TELVOFM_API int setSuperFooter(int device, const char* text);

/* Sets the line before a receipt. Writes nothing to the call log. */
TELVOFM_API int setPreline(int device, const char* description);

/* Sets the line after a receipt. */
TELVOFM_API int setPostline(int device, const char* description);

/* Sets the exchange rate of the euro, sent with 4 decimals. */
TELVOFM_API int setEuroExchangeRate(int device, double exchangeRate);

/* As setEuroExchangeRate, in ten-thousandths. */
TELVOFM_API int setEuroExchangeRate_int(int device, int exchangeRate);

/* ---- Configuration: fiscalization and service ---- */

/*
 * The life of the printer as a fiscal device. The printer judges passwords, codes and dates and decides in
 * which state it allows what. Numbers are sent as given, whatever their value. Texts may have any length and
 * may be empty; they are converted on serial links except where a function says "byte for byte". All return 0
 * or the usual codes. swReset and testTelvoFM write their password to the call log in clear.
 */

/* Initialises the fiscal memory. */
TELVOFM_API int initFP(int device, const char* servicePassword);

/* Initialises the fiscal module. */
TELVOFM_API int initFM(int device, const char* servicePassword);

/* Initialises the electronic journal. */
TELVOFM_API int initELJ(int device, const char* servicePassword);

/* Enables an inspection. */
TELVOFM_API int inspectionEnabled(int device, const char* servicePassword);

/*
 * Carries out the inspection E1 with a number that the printer interprets. The password is left out of the
 * call log, and not even shown as "*****".
 */
TELVOFM_API int inspectionE1(int device, const char* servicePassword, int deltaSI);

/* Lets the printer verify the checksum of the closure with this number in the electronic journal. */
TELVOFM_API int verifyCRCELJ(int device, int closureNumber);

/* Closes the journal's card. */
TELVOFM_API int closeELJcard(int device);

/* Fiscalizes the printer with the registration code `dkp`, which the call log shows in clear. */
TELVOFM_API int fiscalization(int device, const char* password, const char* dkp);

/* Defiscalizes the printer. */
TELVOFM_API int defiscalizationFM(int device, const char* servicePassword);

/* Sets the printer's clock; `date` in the printer's own form. */
TELVOFM_API int setDateTime(int device, const char* date);

/* Hands over the free identifier, byte for byte; `print` asks the printer to print it. */
TELVOFM_API int freeID(int device, TelvofmBool print, const char* id);

/* Resets the printer's software. The password goes out byte for byte, and into the call log in clear. */
TELVOFM_API int swReset(int device, const char* password);

/*
 * Lets the printer test its device of the given number. The password goes out byte for byte, and into the
 * call log in clear; `targetDevice` is labelled "device " there, as the address is.
 */
TELVOFM_API int testTelvoFM(int device, const char* password, int targetDevice);

/* Clears the printer's error states. The call log shows the word resetStates and nothing else. */
TELVOFM_API int clearErrorStates(int device);

/* ---- Configuration: announcements, display, codes ---- */

/*
 * Printing outside a receipt, the customer display, bar codes and QR codes, and the settings of the printer
 * mechanism. Numbers are sent as given and mean what the printer says; texts may have any length, may be
 * empty, and are converted on serial links, passwords and escape sequences too. All return 0 or the usual
 * codes.
 */

/* Prints a line of free text outside a receipt, at the given row; no row number is too large. */
TELVOFM_API int printAnnouncement(int device, int rowNumber, const char* text);

/* As printAnnouncement, in the printer's second variant; the printer decides what this one leaves out. */
TELVOFM_API int printAnnouncementNF(int device, int rowNumber, const char* text);

/* Shows a text on the customer display, behind an escape sequence of the display. */
TELVOFM_API int printDisplay(int device, int displayType, const char* escSequence, const char* text);

/* Clears the customer display. */
TELVOFM_API int clearDisplay(int device, int displayType, const char* escSequence);

/* Sets the parameters of the display. The call log leaves the password out and shows `parameter`. */
TELVOFM_API int setDispF(int device, const char* password, int dispF, int dispT, const char* parameter);

/* Prints `code` as a bar code of the printer's type `codeType`. */
TELVOFM_API int printBC(int device, int codeType, const char* code);

/* Sets how bar codes are printed. */
TELVOFM_API int setBCparm(int device, int textPosition, int textFont, int height, int width);

/* Sets how QR codes are printed. */
TELVOFM_API int setQRparm(int device, int model, int moduleWidth, int errorCorrectionLevel, int leftMargin,
                          int viewMode);

/*
 * Prints a QR code: a command, and then its text in blocks of at most 256 bytes, in one piece before any
 * other thread's call. With an empty text only the command is sent. After a failure the printer may already
 * have accepted the command. On serial links a text that was refused three times gives -10001.
 */
TELVOFM_API int printQRCode(int device, const char* text);

/* Sets the width of the paper in columns. */
TELVOFM_API int setPRNcolumns(int device, int width);

/* Sets a parameter of the printer mechanism. */
TELVOFM_API int setPParameter(int device, const char* password, int paramType, int value);

/* Sets the speed of the printer mechanism, sent as given; the link to the printer keeps its own speed. */
TELVOFM_API int setPRNBd(int device, int baud);

/* Sets the printer's deltaSI. Neither the password nor the number goes into the call log. */
TELVOFM_API int setDeltaSI(int device, const char* servicePassword, int deltaSI);

/* ---- Configuration: online registration ---- */

/*
 * What the printer needs to register sales online. All texts of this section are sent byte for byte, also on
 * serial links; they may have any length and may be empty. Numbers are not checked. All return 0 or the usual
 * codes.
 */

/*
 * Tells where the cash register stands by its position. Both coordinates are sent with 10 decimals; which of
 * them is the latitude is the printer's matter.
 */
TELVOFM_API int setLocationGPS(int device, double vertX, double vertY);

/* Tells where the cash register stands by its postal address. */
TELVOFM_API int setLocationAddress(int device, const char* municipality, const char* street,
                                   const char* number, const char* subNumber, const char* zip);

/* Tells where the cash register stands in free words. */
TELVOFM_API int setLocationOther(int device, const char* description);

/* Sets the address for mail from the printer. */
TELVOFM_API int setEmail(int device, const char* email);

/*
 * Sets the mail server. The first character of `type` counts and is logged. `port` is a signed number of 16
 * bits and sent so: a port up to 32767 as it is, a port from 32768 on as its negative counterpart, 65535 as
 * -1.
 */
TELVOFM_API int setSMTP(int device, const char* type, const char* ipAddress, int16_t port,
                        const char* localDir);

/*
 * Tells the printer the path of its authentication key; the library does not open the file. The password goes
 * into the call log in clear.
 */
TELVOFM_API int setAutKey(int device, const char* password, const char* filePath);

/* Sets the CHDU interface: its type, a character sent as it stands, and its title. */
TELVOFM_API int setPCHDU(int device, char interfaceType, const char* interfaceTitle);

/* As setPCHDU; the first character of `interfaceType` counts. Logged under the name setPCHDU. */
TELVOFM_API int setPCHDU_str(int device, const char* interfaceType, const char* interfaceTitle);

/* Tells the printer the path of the subject's identification data; the library does not open the file. */
TELVOFM_API int setSubjectIDData(int device, const char* filePath);

/* Lets the printer send one unsent packet. Logged under the name sendUnsendedSFSpacket. */
TELVOFM_API int sendUnsentSFSpacket(int device);

/* Prints the packets that are not sent yet. Logged under the name printUnsendedSFSpackets. */
TELVOFM_API int printUnsentSFSpackets(int device);

/*
 * Asks the printer for the packets of the last transactions; nothing is read back. The call log shows the
 * count but not the device.
 */
TELVOFM_API int getLastTransactionPackets(int device, int transactionCount);

/* ---- Reports: printed reports ---- */

/*
 * Reports and extracts that the printer prints itself; nothing is read back. Type letters and numbers are
 * sent as they are, dates have the printer's form; what they mean, and which are allowed, is the printer's.
 * Where a type is a text, its first character is used and logged. Dates, receipt numbers and the password are
 * converted on serial links. All return 0 or the usual codes.
 */

/* Prints a report: the daily closure, for example. */
TELVOFM_API int printReport(int device, char reportType, int reportNumber);

/* As printReport. */
TELVOFM_API int printReport_str(int device, const char* reportType, int reportNumber);

/* Prints a journal. */
TELVOFM_API int printJournal(int device, char journalType, int journalNumber);

/* As printJournal. */
TELVOFM_API int printJournal_str(int device, const char* journalType, int journalNumber);

/* Prints the journal's extract D, by journal type and dates. */
TELVOFM_API int printJournalStructD(int device, char journalType, const char* dateFrom, const char* dateTo);

/* As printJournalStructD. */
TELVOFM_API int printJournalStructD_str(int device, const char* journalType, const char* dateFrom,
                                        const char* dateTo);

/* Prints the extract D1, by journal type and dates. Logged under the name printJournalStructD_str. */
TELVOFM_API int printJournalStructD1(int device, const char* journalType, const char* dateFrom,
                                     const char* dateTo);

/* Prints the extract Z, by numbers. */
TELVOFM_API int printJournalStructZ(int device, int numberFrom, int numberTo);

/* Prints the extract Z1, by document type and numbers. */
TELVOFM_API int printJournalStructZ1(int device, const char* docType, int numberFrom, int numberTo);

/* Prints the extract U, one receipt by its number. */
TELVOFM_API int printJournalStructU(int device, const char* paragonSn);

/* Prints the yearly closure. The call log shows ***** in place of the password. */
TELVOFM_API int printYearlyClosure(int device, const char* password);

/*
 * Prints an extract of the fiscal memory by dates. It has the command code of the yearly closure; the printer
 * tells them apart by their fields.
 */
TELVOFM_API int printIntervalFPD(int device, int printType, const char* dateFrom, const char* dateTo);

/* Prints an extract of the fiscal memory by numbers. */
TELVOFM_API int printIntervalFPC(int device, int printType, int numberFrom, int numberTo);

/* ---- Reports: journals ---- */

/*
 * The journal functions read the electronic journal, whole or in extracts.
 *   journalType, docType    a letter whose meaning is the printer's, never converted; where it is a text, its
 *                           first character is used and logged
 *   dateFrom, dateTo        dates in the printer's form, converted on serial links
 *   numberFrom, numberTo    the first and the last number
 *   paragonSn               the number of a receipt, converted on serial links
 * The reply is the printer's, byte for byte but for the conversion on serial links; it may contain 0x00 and
 * is not parsed. It goes
 *   into a buffer           exactly, without a terminator; an empty reply leaves the buffer as it was. A
 *                           reply longer than `bufferSize` fills the buffer with 0x00 and raises the C
 *                           runtime's invalid-parameter failure, which by default ends the process.
 *                           getJournalStructD and getJournalStructD_str differ, see there
 *   into a result object    whatever its length, in place of what the object held; with a null object nothing
 *                           is sent and -1 comes back
 *   into a file             which is created or emptied; -10201 when it cannot be opened or written
 * Only getJournal_str_count and result objects tell the length. All return 0 or the usual codes; after a
 * failure buffers and result objects keep their contents.
 */

/* The whole journal into a buffer. */
TELVOFM_API int getJournal(int device, char* buffer, int bufferSize);

/* As getJournal; `count`, unless it is null, gets the length of the reply, 0 for an empty one. */
TELVOFM_API int getJournal_str_count(int device, char* buffer, int bufferSize, unsigned int* count);

/* The whole journal into a result object. Logged after success only, under the name getJournal and with the
 * whole journal. */
TELVOFM_API int getJournal_ResultObject(int device, ResultObject* result);

/* The whole journal into a file, which is created when all of it has come. */
TELVOFM_API int getJournal_str_tofile(int device, const char* fileName);

/* The extract D, by journal type and dates, into a buffer, each 0x00 as a blank. At most `bufferSize` bytes
 * are copied, but the terminating 0x00 goes to the position of the reply's full length, also beyond the
 * buffer: it must hold the reply and one byte more. */
TELVOFM_API int getJournalStructD(int device, char journalType, const char* dateFrom, const char* dateTo,
                                  char* buffer, int bufferSize);

/* As getJournalStructD, the terminator beyond the buffer included. */
TELVOFM_API int getJournalStructD_str(int device, const char* journalType, const char* dateFrom,
                                      const char* dateTo, char* buffer, int bufferSize);

/* The extract D into a result object. */
TELVOFM_API int getJournalStructD_ResultObject(int device, char journalType, const char* dateFrom,
                                               const char* dateTo, ResultObject* result);

/* As getJournalStructD_ResultObject. Logged with a small "str" in its name. */
TELVOFM_API int getJournalStructD_Str_ResultObject(int device, const char* journalType, const char* dateFrom,
                                                   const char* dateTo, ResultObject* result);

/* The extract D into a file, which is created when all of it has come. */
TELVOFM_API int getJournalStructD_str_tofile(int device, const char* journalType, const char* dateFrom,
                                             const char* dateTo, const char* fileName);

/* The extract D1, by journal type and dates, into a buffer, exactly. */
TELVOFM_API int getJournalStructD1(int device, const char* journalType, const char* dateFrom,
                                   const char* dateTo, char* buffer, int bufferSize);

/* The extract D1 into a result object. */
TELVOFM_API int getJournalStructD1_ResultObject(int device, const char* journalType, const char* dateFrom,
                                                const char* dateTo, ResultObject* result);

/* Asks for the extract D, not D1, and puts it into a file, which is created when all of it has come. */
TELVOFM_API int getJournalStructD1_tofile(int device, const char* journalType, const char* dateFrom,
                                          const char* dateTo, const char* fileName);

/* The extract Z, by numbers, into a buffer, exactly. */
TELVOFM_API int getJournalStructZ(int device, int numberFrom, int numberTo, char* buffer, int bufferSize);

/* The extract Z into a result object. */
TELVOFM_API int getJournalStructZ_ResultObject(int device, int numberFrom, int numberTo,
                                               ResultObject* result);

/* The extract Z into a file, which is created when all of it has come. */
TELVOFM_API int getJournalStructZ_tofile(int device, int numberFrom, int numberTo, const char* fileName);

/* The extract Z1, by document type and numbers, into a buffer, exactly. */
TELVOFM_API int getJournalStructZ1(int device, const char* docType, int numberFrom, int numberTo,
                                   char* buffer, int bufferSize);

/* The extract Z1 into a result object. */
TELVOFM_API int getJournalStructZ1_ResultObject(int device, const char* docType, int numberFrom, int numberTo,
                                                ResultObject* result);

/* The extract Z1 into a file, which is created before anything is sent and stays, perhaps empty, after a
 * failure. A failure is written to the call log too, also while the log is off. */
TELVOFM_API int getJournalStructZ1_tofile(int device, const char* docType, int numberFrom, int numberTo,
                                          const char* fileName);

/* The extract U, one receipt by its number, into a buffer, exactly. */
TELVOFM_API int getJournalStructU(int device, const char* paragonSn, char* buffer, int bufferSize);

/* The extract U into a result object. */
TELVOFM_API int getJournalStructU_ResultObject(int device, const char* paragonSn, ResultObject* result);

/* The extract U into a file, which is created when all of it has come. */
TELVOFM_API int getJournalStructU_tofile(int device, const char* paragonSn, const char* fileName);

/* A saved journal, by type and number, into a file, which is created before anything is sent and stays,
 * perhaps empty, after a failure. */
TELVOFM_API int saveJournalToFile(int device, char journalType, int journalNumber, const char* journalFile);

/* As saveJournalToFile. */
TELVOFM_API int saveJournalToFile_str(int device, const char* journalType, int journalNumber,
                                      const char* journalFile);

/* ---- Reports: variables, last receipt, intervals ---- */

/* Reads the printer's variable of the given code (converted on serial links, as the reply is) without the
 * line end that the printer puts behind it; a reply of one or two bytes counts as empty. It is copied up to
 * its first 0x00, with a terminator. When both do not fit into `resultSize` bytes, the buffer is emptied and
 * the C runtime's invalid-parameter failure raised, which ends the program unless it installed a handler.
 * Returns 0 or the usual codes; a failure leaves the buffer as it was. Logged after success only, with the
 * variable's text. */
TELVOFM_API int getVariable(int device, const char* variableCode, char* result, int resultSize);

/* As getVariable, into a result object, of any length. A null object gives -1 and nothing is sent. Logged as
 * getVariable is, under its name. */
TELVOFM_API int getVariableResultObject(int device, const char* variableCode, ResultObject* result);

/* As getVariable, but returns the text, or "Error" on a failure and while no printer is open. The text is the
 * library's; it is valid until the next call of this function on the same thread. */
TELVOFM_API const char* getVariableStr(int device, const char* variableCode);

/* Copies at most `bufferSize` bytes of the last receipt's image, each 0x00 as a blank, without a terminator;
 * what is left of the buffer stays as it was. Returns 0 or the usual codes. Logged after success only, with
 * the whole image. */
TELVOFM_API int getLastParagon(int device, char* buffer, int bufferSize);

/* Puts the last receipt's image, 0x00 bytes included, into a result object. A null object gives -1 and
 * nothing is sent. Returns 0 or the usual codes. Logged after success only, with the whole image. */
TELVOFM_API int getLastParagonResultObject(int device, ResultObject* result);

/* Reads an extract of the fiscal memory by dates (converted on serial links, as the reply is); delivered and
 * too long for the buffer as getVariable's text, but never shortened. Returns 0 or the usual codes. */
TELVOFM_API int getIntervalFPD(int device, int printType, const char* dateFrom, const char* dateTo,
                               char* result, int resultSize);

/* As getIntervalFPD, by numbers. */
TELVOFM_API int getIntervalFPC(int device, int printType, int numberFrom, int numberTo, char* result,
                               int resultSize);

/* ---- Reports: backups and memory images ---- */

/* Tells the printer to restore from its backup. The password goes out byte for byte, and into the call log in
 * clear. Returns 0 or the usual codes. */
TELVOFM_API int restoreBCKP(int device, const char* password);

/* Reads a backup page into a buffer, exactly as getJournal does; a page too long for it fills the buffer with
 * 0x00 and raises the invalid-parameter failure. The password goes out byte for byte, and into the call log
 * in clear. Returns 0 or the usual codes. */
TELVOFM_API int getBCKP(int device, const char* password, int page, char* buffer, int bufferSize);

/* Reads a backup page into a file, which is created before anything is sent and stays, perhaps empty, after a
 * failure; -10201 when it cannot be created or written. The password goes into the call log in clear, the
 * file name does not. */
TELVOFM_API int saveBCKP(int device, const char* password, int page, const char* fileName);

/* Reads the memory image into a buffer, as getBCKP does a page. The password goes into the call log in clear.
 */
TELVOFM_API int getRAMMP(int device, const char* password, char* buffer, int bufferSize);

/* Reads the memory image into a file, as saveBCKP does a page. The password goes into the call log in clear.
 */
TELVOFM_API int saveRAMMP(int device, const char* password, const char* fileName);

/* ---- Reports: journal archive ---- */

/*
 * The journal archives that the printer keeps under a name. Nothing is read back. All texts of this section
 * are sent byte for byte, also on serial links; they may have any length and may be empty. All return 0 or
 * the usual codes; the printer refuses an archive that is unknown or damaged.
 */

/* Lets the printer validate an archive. */
TELVOFM_API int validateArchiveDb(int device, const char* archiveDbName);

/* Prints an extract of the fiscal memory by dates from an archive. `journalType` is sent whole. */
TELVOFM_API int printIntervalFPDArchive(int device, int printType, const char* dateFrom, const char* dateTo,
                                        const char* journalType);

/* Prints one receipt by its number from an archive. `journalType` is sent whole. */
TELVOFM_API int printJournalStructUArchive(int device, const char* paragonSn, const char* journalType);

/* Prints the extract D, by journal type and dates, from an archive. */
TELVOFM_API int printJournalStructDArchive(int device, char journalType, const char* dateFrom,
                                           const char* dateTo, const char* archiveDbName);

/* ---- Graphics ---- */

/*
 * Logos take two steps: a prepare function converts a monochrome bitmap file into the printer's layouts and
 * keeps them with the session under `imageIndex`; a load function uploads them. An index keeps the picture
 * that was prepared first; closeFM forgets all. All return 0 or the usual codes.
 */

/*
 * Loads a BMP file of one bit per pixel in black and white; black prints as dots. Nothing is sent. Writes
 * "Path: ..." and, when the file is a bitmap, "OK" to standard output. Returns -10201 when the file is no
 * bitmap, -10104 when it is not monochrome.
 */
TELVOFM_API int prepareGraphicHeader(int imageIndex, const char* fileName);

/* As prepareGraphicHeader; when `inverse` is not 0, white and the padding print as dots. */
TELVOFM_API int prepareGraphicHeader_inverse(int imageIndex, const char* fileName, int inverse);

/* Uploads a prepared picture row by row; nothing is uploaded for an index without one. */
TELVOFM_API int loadGHMMC(int device, int imageNumber, int leftSpacing);

/* Uploads a prepared picture in bands of eight rows; nothing is uploaded for an index without one. */
TELVOFM_API int loadGHMMC1(int device, int imageNumber, int leftSpacing);

/*
 * Uploads the pictures 1 to `imageCount` column by column. With more than 6 nothing is sent and 0 returned.
 * `printLogoAfterPrint` is a truth value.
 */
TELVOFM_API int loadGHNV(int device, int imageCount, int leftSpacing1, int leftSpacing2, int leftSpacing3,
                         int leftSpacing4, int leftSpacing5, int leftSpacing6, int printLogoAfterPrint);

/* As loadGHNV, without a limit to `imageCount`. */
TELVOFM_API int loadGHNV2(int device, int imageCount, int leftSpacing1, int leftSpacing2, int leftSpacing3,
                          int leftSpacing4, int leftSpacing5, int leftSpacing6, int printLogoAfterPrint);

/*
 * Uploads the picture that was prepared under index 9, column by column. Without one nothing is uploaded, and
 * a picture that is prepared under 9 afterwards is taken neither by this function nor by loadGHNV2 any more.
 */
TELVOFM_API int loadRAMBitMap(int device, int leftSpacing, int printLogoAfterPrint);

/* Uploads `imageDataByteSize` bytes as they are (none when it is 0 or less), and four 0x00 bytes. */
TELVOFM_API int printGraphic(int device, int printType, int graphicIndex, const void* imageData,
                             int imageDataByteSize);

#ifdef __cplusplus
}
#endif

#endif
