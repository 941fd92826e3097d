using System;
using System.Collections.Generic;
using System.Globalization;
using System.IO;
using System.Text;
using Telvofm;

/// <summary>A till that is told each of its steps by told_till_test.py: ToldTill.exe ADDRESS.</summary>
sealed class ToldTill
{
    readonly Session session;
    readonly Dictionary<string, Receipt> receipts = new Dictionary<string, Receipt>();

    ToldTill(Session session)
    {
        this.session = session;
    }

    /// <summary>"done", with what the step delivers behind it, or what failed.</summary>
    string Said(string line)
    {
        try
        {
            return ("done " + Done(line.Split(' '))).TrimEnd();
        }
        catch (CallException failure)
        {
            return failure.GetType().Name.Replace("Exception", "") + " " + failure.Message;
        }
    }

    string Done(string[] words)
    {
        string name = words.Length > 1 ? words[1] : "";
        decimal sum = words.Length > 2 ? decimal.Parse(words[2], CultureInfo.InvariantCulture) : 0;
        switch (words[0])
        {
            case "day":
                session.BeginDay();
                return "";
            case "ask":
                return session.Variable(name);
            case "reopen":
                session.Reopen();
                return "";
            case "forget":
                receipts.Clear();
                return "";
            case "interrupted":
                receipts[name] = session.InterruptedReceipt(words.Length > 3 ? words[3] : "", sum);
                return "";
            default:
                return OfReceipt(words[0], ReceiptCalled(name), sum);
        }
    }

    Receipt ReceiptCalled(string name)
    {
        Receipt receipt;
        if (!receipts.TryGetValue(name, out receipt))
        {
            receipts[name] = receipt = session.NewReceipt();
        }
        return receipt;
    }

    static string OfReceipt(string step, Receipt receipt, decimal sum)
    {
        switch (step)
        {
            case "begin":
                receipt.Begin();
                return "";
            case "sell":
                receipt.Sell("Čaj", sum, 'A', 1, sum, "");
                return "";
            case "void":
                receipt.Void("Čaj", sum, 'A', 1, sum, "");
                return "";
            case "pay":
                receipt.Pay(1, sum, "");
                return "";
            case "cancel":
                receipt.Cancel();
                return "";
            case "recover":
                return receipt.Recover().ToString();
            default:
                return receipt.End();
        }
    }

    static void Main(string[] arguments)
    {
        using (var session = new Session(arguments[0]))
        using (var answers = new StreamWriter(Console.OpenStandardError(), new UTF8Encoding(false)) { AutoFlush = true })
        {
            var till = new ToldTill(session);
            for (string line = Console.ReadLine(); line != null; line = Console.ReadLine())
            {
                answers.WriteLine(till.Said(line)); // the library writes to standard output
            }
        }
    }
}
