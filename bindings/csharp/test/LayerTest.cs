using System;
using System.Globalization;
using System.IO;
using System.Linq;
using System.Threading;
using Telvofm;
using Telvofm.Raw;

/// <summary>The layer where the demo receipt does not come: LayerTest.exe ADDRESS. Prints what is wrong, and ends with 1 then.</summary>
static class LayerTest
{
    static int failures;

    static void Check(bool holds, string what)
    {
        if (!holds)
        {
            Console.WriteLine("wrong: " + what);
            failures++;
        }
    }

    static void CheckThrows<T>(string words, Action action) where T : Exception
    {
        try
        {
            action();
            Check(false, "no " + typeof(T).Name + " with " + words);
        }
        catch (Exception thrown)
        {
            Check(thrown is T && thrown.Message.Contains(words), thrown + " instead of " + typeof(T).Name + " with " + words);
        }
    }

    static void Texts()
    {
        byte[] every = Enumerable.Range(1, 255).Select(value => (byte)value).ToArray();
        Check(Windows1250.Encode(Windows1250.Decode(every)).SequenceEqual(every.Concat(new byte[] { 0 })), "255 bytes and back");
        Check(Windows1250.Decode(new byte[] { 0 }) == "\0", "a NUL is read");
        Check(Windows1250.Encode("šč žťľ€").SequenceEqual(new byte[] { 0x9A, 0xE8, 0x20, 0x9E, 0x9D, 0xBE, 0x80, 0 }), "Windows-1250");
        Check(Windows1250.Decode(new byte[] { 0x81, 0x83, 0x88, 0x90, 0x98 }) == "\u0081\u0083\u0088\u0090\u0098", "open bytes");
        Check(Windows1250.Encode('ž') == 0x9E, "a letter");
        Check(Windows1250.Encode(null).SequenceEqual(new byte[] { 0 }), "null is empty");
        CheckThrows<TextException>("ñ (U+00F1) at position 2", () => Windows1250.Encode("Piña"));
        CheckThrows<TextException>("(U+1F600) at position 1", () => Windows1250.Encode("a\U0001F600"));
        CheckThrows<TextException>("(U+D83D) at position 0", () => Windows1250.Encode("\uD83D")); // half of a character
        CheckThrows<TextException>("(U+030C) at position 1", () => Windows1250.Encode("s\u030C")); // another way to write š
        CheckThrows<TextException>("NUL at position 6", () => Windows1250.Encode("Chlieb\0 tajný"));
    }

    static void TestFailures()
    {
        CallException refused = CallException.Of("itemSale_str", 26, false), late = CallException.Of("payment_str", 32, true);
        Check(refused is RefusedException && refused.Executed == Executed.No, "a refusal");
        Check(refused.Message.StartsWith("itemSale_str: code 26 (refused): ") && refused.Message.Contains("It was not carried out."), refused.Message);
        Check(late is OutcomeUnknownException && late.Executed == Executed.Unknown, "a slow refusal");
        foreach (int code in new[] { -10201, -10202, -10002, 64, -77 })
        {
            Check(CallException.Of("paragonEnd", code, false) is OutcomeUnknownException, "code " + code);
        }
        Check(CallException.Of("openFM", -1, true) is NotExecutedException, "what never left");
        CheckThrows<LibraryException>("32 bits; build it for x64", () => Library.RequireBits(32));
        // Windows answers so with a library for 32 bits; Mono on Linux calls every file that it cannot load a missing one.
        Check(Library.Explained(new BadImageFormatException(), "getVersion").EndsWith("put the 64-bit telvofm.dll beside the program."), "32 bits");
        Check(Library.Explained(new OutOfMemoryException(), "getVersion") == null, "what is not the library's fault");
    }

    static Receipt WithOneItem(Session session)
    {
        Receipt receipt = session.NewReceipt();
        receipt.Begin();
        receipt.Sell("Žemľa", 0.25m, 'A', 1, 0.25m, "ks");
        return receipt;
    }

    static void OpenSession(Session session, string address)
    {
        CheckThrows<InvalidOperationException>("one at a time; close it first", () => new Session(address));
        Check(!session.BeginDay(), "a new day whose acknowledge is lost");
        Check(!session.BeginDay(), "a day that is open");
        byte[] header = Windows1250.Encode("Potraviny Šťastný"), password = Windows1250.Encode("0000");
        session.Call("setHeader", () => Functions.setHeader(session.Device, password, 1, header));
        session.Call("freeID", () => Functions.freeID(session.Device, 1, Windows1250.Encode("ščžťľ")));
        Truths(session);
        Refusals(session);
        session.Call("printReport", () => Functions.printReport(session.Device, Windows1250.Encode('X'), 1));
        CheckThrows<RefusedException>("getVariable", () => session.Variable("NOTHING_LIKE_THAT"));
        for (int number = 1; number <= 3; number++)
        {
            Receipt receipt = WithOneItem(session);
            receipt.Pay(1, 0.25m, "Hotovosť");
            Check(receipt.End() == number.ToString(), "receipt " + number);
        }
        Check(session.Journal().Split(new[] { "Žemľa" }, StringSplitOptions.None).Length == 4, "three items in the journal");
        Check(session.LastReceipt().Contains("Receipt 3"), "the last receipt");
        session.Call("getJournal_str_tofile", () => Functions.getJournal_str_tofile(session.Device, FileName.Encode("žurnál.txt")));
        CheckThrows<TextException>("NUL at position 1", () => FileName.Encode("a\0.txt"));
        byte[] second = session.Read("getJournalStructZ_ResultObject", result => Functions.getJournalStructZ_ResultObject(session.Device, 2, 2, result));
        Check(Windows1250.Decode(second).Contains("Receipt 2"), "the second receipt");
        session.Call("printReport", () => Functions.printReport(session.Device, Windows1250.Encode('Z'), 1));
        Check(session.BeginDay(), "a new day");
    }

    /// <summary>Any byte but 0 is true, as other languages and compilers have it.</summary>
    static void Truths(Session session)
    {
        byte[] id = Windows1250.Encode("ščžťľ");
        foreach (byte truth in new byte[] { 2, 255, 0 })
        {
            session.Call("freeID", () => Functions.freeID(session.Device, truth, id));
            Functions.setAutoTwoLineItem(truth);
            Check(Functions.isAutoTwoLineItem() == (truth == 0 ? 0 : 1), "the truth " + truth);
        }
    }

    /// <summary>What fails before anything is sent; the result objects are counted from outside.</summary>
    static void Refusals(Session session)
    {
        CheckThrows<TextException>("ñ (U+00F1) at position 0", () => session.Variable("ñ"));
        CheckThrows<TextException>("ñ (U+00F1) at position 0", () => session.Read("getVariableResultObject",
            result => Functions.getVariableResultObject(session.Device, Windows1250.Encode("ñ"), result)));
        CheckThrows<TextException>("ñ (U+00F1) at position 2", () => session.NewReceipt().Sell("Piña", 1, 'A', 1, 1, "ks"));
        CheckThrows<ArgumentException>("getJournal fills a buffer, and one that is too short ends the process",
            () => session.Call("getJournal", () => BufferFunctions.getJournal(session.Device, new byte[1], 1)));
    }

    /// <summary>A session that is closed leaves the connection of the next one alone.</summary>
    static void AnotherSession(string address)
    {
        var first = new Session(address);
        Receipt receipt = WithOneItem(first);
        first.Dispose();
        Check(receipt.Recover().Verdict == Verdict.AskAPerson, "a receipt whose session is closed");
        using (var another = new Session(address))
        {
            Functions.setAutoTwoLineItem(1); // is forgotten when a connection is opened
            CheckThrows<NotExecutedException>("code -1 (notOpen): This session is closed.", first.Reopen);
            CheckThrows<NotExecutedException>("This session is closed.", () => first.BeginDay());
            CheckThrows<NotExecutedException>("This session is closed.", () => first.Journal());
            CheckThrows<NotExecutedException>("This session is closed.", () => receipt.Cancel());
            Recovery recovery = receipt.Recover();
            Check(recovery.Verdict == Verdict.AskAPerson && recovery.Sentence.StartsWith("the session of this receipt is closed"), recovery.ToString());
            first.Dispose();
            Check(!first.IsOpen && another.IsOpen && Functions.isAutoTwoLineItem() == 1, "the connection of another session");
            Check(another.Variable("STATE") == "open", "the receipt of a session that was closed");
            Check(another.InterruptedReceipt(receipt.NumberBefore, 0.25m).Recover().Verdict == Verdict.NotSold, "a receipt of another session");
        }
    }

    static void Recovering(Session session)
    {
        Receipt forgotten = WithOneItem(session);
        forgotten.Pay(1, 0.25m, "Hotovosť");
        CheckThrows<OutcomeUnknownException>("last receipt is still 3", () => forgotten.End());
        Recovery recovery = forgotten.Recover();
        Check(recovery.Verdict == Verdict.Sold && recovery.Number == "4", "a receipt whose end was forgotten, behind its like");
        Receipt empty = session.NewReceipt();
        empty.Begin();
        Check(empty.Recover().Verdict == Verdict.NotSold, "a receipt without a line");
        empty.Begin();
        CheckThrows<RefusedException>("paragonEnd", () => empty.End());
        Check(empty.Recover().Verdict == Verdict.NotSold, "one whose end was refused");
        empty.Begin();
        Check(session.InterruptedReceipt(empty.NumberBefore, 0).Recover().Verdict == Verdict.NotSold, "a till that was switched off behind begin");

        Receipt receipt = WithOneItem(session);
        CheckThrows<AmountException>("1.005 has more than 2 decimals; round it first", () => receipt.Pay(1, 1.005m, ""));
        CheckThrows<AmountException>("0.1255 has more than 3 decimals; round it first", () => receipt.Sell("Med", 1, 'A', 0.1255m, 1, "ks"));
        CheckThrows<AmountException>("8.333 has more than 2 decimals; round it first", () => receipt.Sell("Med", 1, 'A', 1, 8.333m, "ks"));
        CheckThrows<AmountException>("0.0000001 has more than 2 decimals", () => receipt.Pay(1, 0.0000001m, ""));
        CheckThrows<AmountException>("say the amount", () => receipt.Pay(1, 0, ""));
        CheckThrows<RefusedException>("itemSale_str", () => receipt.Sell("Med", 1, 'H', 1, 1, "ks")); // no such rate; it goes on
        CheckThrows<AmountException>("23.595 has more than 2 decimals; round it first", () => receipt.Total = 23.595m);
        CheckThrows<AmountException>("23.595 has more than 2 decimals; round it first", () => session.InterruptedReceipt("1", 23.595m));
        receipt.Total += 1;
        CheckThrows<OutcomeUnknownException>("the total is \"0.25\", for the till 1.25", () => receipt.Pay(1, 1.25m, ""));
        CheckThrows<OutcomeUnknownException>("for the till 1.25", () => receipt.Sell("Med", 1, 'A', 1, 1, "ks"));
        CheckThrows<OutcomeUnknownException>("for the till 1.25", () => receipt.Begin());
        Check(receipt.Recover().Verdict == Verdict.NotSold, "a receipt of another total");
        Check(receipt.Recover().Verdict == Verdict.NotSold, "asked again");
        receipt.Begin();
        Check(receipt.Total == 0, "the same object begins afresh");
        receipt.Sell("Med", 1, 'A', 1, 1, "ks");
        receipt.Cancel();
        CheckThrows<NotExecutedException>("is over", () => receipt.Cancel());

        Receipt left = WithOneItem(session);
        Receipt another = session.NewReceipt();
        CheckThrows<NotExecutedException>("was not begun", () => another.Cancel());
        CheckThrows<NotExecutedException>("paragonBegin: code -1 (notOpen): Another receipt is open", () => another.Begin());
        CheckThrows<NotExecutedException>("or another one may be open. It was not carried out. To cancel another one call destroyParagon through "
                                          + "the session.", () => another.Cancel());
        Check(another.Recover().Verdict == Verdict.AskAPerson && session.Variable("STATE") == "open", "a receipt behind one that was open");
        Check(session.InterruptedReceipt(left.NumberBefore, 0.25m).Recover().Verdict == Verdict.NotSold, "a till that was switched off");
        Check(session.InterruptedReceipt("2", 0.25m).Recover().Number == "4", "a till that was switched off behind the end");
        Check(session.InterruptedReceipt("1", 7).Recover().Verdict == Verdict.AskAPerson, "a receipt of somebody else");
    }

    /// <summary>Nothing goes into it, and nothing is sent.</summary>
    static void TakesNothing(Receipt receipt, string what)
    {
        const string log = "nothing.log";
        Functions.setRawLogginOn(FileName.Encode(log));
        CheckThrows<NotExecutedException>("This receipt is not open", () => receipt.Sell("Med", 1, 'A', 1, 1, "ks"));
        CheckThrows<NotExecutedException>("This receipt is not open", () => receipt.Void("Med", 1, 'A', 1, 1, "ks"));
        CheckThrows<NotExecutedException>("This receipt is not open", () => receipt.Discount("Zľava", 1, 'A'));
        CheckThrows<NotExecutedException>("This receipt is not open", () => receipt.Pay(1, 1, ""));
        CheckThrows<NotExecutedException>("This receipt is not open", () => receipt.End());
        Functions.seRawLogginOff();
        Check(new FileInfo(log).Length == 0, "something is sent for " + what);
    }

    static void WhatIsNotOpen(Session session)
    {
        Receipt open = WithOneItem(session), other = session.NewReceipt();
        TakesNothing(other, "a receipt that was not begun");
        CheckThrows<NotExecutedException>("paragonBegin", () => other.Begin());
        TakesNothing(other, "one whose begin was refused");
        CheckThrows<NotExecutedException>("This receipt is open already", () => open.Begin());
        open.Sell("Med", 1, 'A', 1, 1, "ks");
        Check(session.Variable("TOTAL") == "1.25", "what the receipt that was open has");
        open.Cancel();
        TakesNothing(open, "one that is cancelled");

        Receipt followed = WithOneItem(session);
        session.Call("destroyParagon", () => Functions.destroyParagon(session.Device, 0, null)); // past the object
        Receipt next = WithOneItem(session);
        TakesNothing(followed, "one that another has followed");
        CheckThrows<NotExecutedException>("or another one may be open", () => followed.Cancel());
        Check(followed.Recover().Sentence.StartsWith("another receipt was begun since") && session.Variable("STATE") == "open", "the one that followed");
        next.Cancel();

        session.Call("printReport", () => Functions.printReport(session.Device, Windows1250.Encode('Z'), 1));
        CheckThrows<RefusedException>("paragonBegin", () => next.Begin()); // no day is open, nor is a receipt
        TakesNothing(next, "one that nobody has begun");
        Check(next.Recover().Verdict == Verdict.NotSold, "one that was refused without a day");
        Check(session.BeginDay(), "the day after");
    }

    static void PrinterThatCannotBeAsked(string address)
    {
        CheckThrows<ArgumentException>("give all of them, or Questions.None", () => new Session(address, 1, new Questions { Due = null }));
        using (var blind = new Session(address, 1, Questions.None))
        {
            Receipt open = WithOneItem(blind), other = blind.NewReceipt();
            CheckThrows<RefusedException>("paragonBegin", () => other.Begin());
            TakesNothing(other, "one behind another, for all that is known");
            CheckThrows<NotExecutedException>("or another one may be open", () => other.Cancel());
            open.Pay(1, 0.25m, "");
            CheckThrows<AmountException>("Nothing is left to pay", () => open.Pay(1, 0.25m, ""));
            Check(open.End() == "", "the number of a receipt that nobody knows");
            TakesNothing(open, "one that is ended");
            CheckThrows<NotExecutedException>("is over", () => open.Cancel());
        }
        using (var session = new Session(address, 1, new Questions { LastNumber = "VAT_H" })) // empty: no rate
        {
            CheckThrows<NotExecutedException>("What the printer answers for VAT_H is not one line of text", () => session.NewReceipt().Begin());
        }
    }

    static int Main(string[] arguments)
    {
        Thread.CurrentThread.CurrentCulture = CultureInfo.CreateSpecificCulture("sk-SK"); // with decimal commas
        Texts();
        TestFailures();
        using (var session = new Session(arguments[0]))
        {
            OpenSession(session, arguments[0]);
            Recovering(session);
            WhatIsNotOpen(session);
        }
        AnotherSession(arguments[0]);
        PrinterThatCannotBeAsked(arguments[0]);
        return failures == 0 ? 0 : 1;
    }
}
