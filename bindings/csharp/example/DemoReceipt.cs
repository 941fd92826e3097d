using System;
using System.Globalization;
using System.Text;
using Telvofm;

/// <summary>Sells the demo receipt (../../demo_receipt.md), and finds out what happened when something fails.
///
///     DemoReceipt.exe ADDRESS</summary>
static class DemoReceipt
{
    static void Fill(Receipt receipt)
    {
        receipt.Begin();
        receipt.Sell("Chlieb šumavský", 12.50m, 'A', 1.5m, 8.33m, "kg");
        receipt.Sell("Čučoriedková šťava", 3.90m, 'B', 2, 1.95m, "fľa");
        receipt.Sell("Žemľa", 2.50m, 'A', 10, 0.25m, "ks");
        receipt.Sell("Horúca čokoláda", 2.40m, 'B', 2, 1.20m, "šál");
        receipt.Sell("Med", 1.20m, 'C', 3, 0.40m, "lyž");
        receipt.Sell("Jogurt", 0.89m, 'C', 1, 0.89m, "čaš");
        receipt.Sell("Ťahaná štrúdľa", 3.00m, 'A', 4, 0.75m, "ťah");
        receipt.Discount("Zľava stálym zákazníkom", 0.30m, 'A');
        receipt.Void("Žemľa", 2.50m, 'A', 10, 0.25m, "ks");
        receipt.Pay(4, 5.00m, "Šaľa");
        receipt.Pay(2, 5.00m, "Čip. karta");
        receipt.Pay(3, 4.00m, "Poukážka");
        receipt.Pay(1, 20.00m, "Hotovosť");
    }

    /// <summary>Sells the receipt, says what has become of it, and returns the code that the program ends with.</summary>
    static int Sell(Session session)
    {
        session.BeginDay();
        Receipt receipt = session.NewReceipt();
        try
        {
            Fill(receipt);
            string number = receipt.End();
            Console.WriteLine("sold: receipt " + number + ", total " + receipt.Total.ToString(CultureInfo.InvariantCulture));
            return 0;
        }
        catch (CallException failure)
        {
            Console.WriteLine("failed: " + failure.Message);
            Recovery recovery = receipt.Recover();
            Console.WriteLine(recovery);
            return recovery.Verdict == Verdict.Sold ? 0 : recovery.Verdict == Verdict.NotSold ? 1 : 3;
        }
    }

    static int Main(string[] arguments)
    {
        Console.OutputEncoding = new UTF8Encoding(false); // whatever the terminal's own code page
        if (arguments.Length != 1)
        {
            Console.Error.WriteLine("usage: DemoReceipt.exe ADDRESS");
            return 2;
        }
        try
        {
            using (var session = new Session(arguments[0]))
            {
                return Sell(session);
            }
        }
        catch (LibraryException missing)
        {
            Console.Error.WriteLine(missing.Message);
            return 2;
        }
        catch (CallException failure)
        {
            Console.WriteLine("not sold: " + failure.Message);
            return 1;
        }
    }
}
