using Telvofm.Raw;

namespace Telvofm
{
    /// <summary>A receipt that compares its own total with the printer's, because a request whose answer was lost is sent
    /// again, may be carried out twice, and returns 0. After any failure Recover tells what happened.</summary>
    public sealed partial class Receipt
    {
        readonly Session session;
        readonly Questions questions;
        bool begun; // or may be
        bool taken; // by the printer, which answered begin with 0
        bool over; // ended, cancelled, or recovered without a person: nothing of it is open
        bool anotherOpen; // so that this one was not begun
        bool compared; // its total with the printer's, before the first payment
        bool finished; // as far as the till goes: paid in full, refused or not, or told to end
        OutcomeUnknownException doubt; // after it nothing more is sold into the receipt
        Recovery outcome; // when it is certain
        decimal sum; // what is sold so far

        /// <summary>The last receipt's number before this one began; null while it has not, or cannot be asked.</summary>
        public string NumberBefore { get; private set; }

        /// <summary>What is sold so far. Correct it after what went to the printer past this class. Throws AmountException.</summary>
        public decimal Total
        {
            get { return sum; }
            set
            {
                Amounts.Money(value);
                sum = value;
            }
        }

        /// <summary>What is paid so far.</summary>
        public decimal Paid { get; private set; }

        internal Receipt(Session session)
        {
            this.session = session;
            questions = session.Questions;
        }

        internal static Receipt Interrupted(Session session, string numberBefore, decimal total)
        {
            return session.BegunLast = new Receipt(session)
            {
                NumberBefore = numberBefore,
                Total = total,
                Paid = total,
                begun = true,
                finished = total != 0, // a till that has kept no total says 0
                doubt = OutcomeUnknownException.Doubt("recover", "The till was interrupted in this receipt.")
            };
        }

        /// <summary>What an earlier receipt of this object has left.</summary>
        void StartAfresh()
        {
            NumberBefore = null;
            Total = Paid = 0;
            begun = taken = over = anotherOpen = compared = finished = false;
            doubt = null;
            outcome = null;
        }

        // ---- Selling ----

        // What is sent throws RefusedException (the receipt goes on), OutcomeUnknownException (it takes nothing more) or
        // NotExecutedException. Texts go out in Windows-1250: TextException names a character that it lacks. AmountException is for amounts
        // with more decimals than money (2) or quantities (3) have. After these two nothing was sent. Nor is anything, and
        // NotExecutedException is thrown, when Begin has not worked, when the receipt is over, and when another object of the session
        // has begun one since: what is open then is not this one.

        /// <summary>Opens the receipt; what the numbers mean is the printer's matter. Throws as every call does, and NotExecutedException
        /// also while any receipt is open, and when the printer does not say whether one is; it is asked again over a new connection
        /// before, which forgets the settings and pictures of the session. Throws OutcomeUnknownException also while it is unknown what
        /// became of the receipt that was begun before with this object. After a failure call Recover before anything else: the printer
        /// may have opened it and refused the same request when it was sent again.</summary>
        public void Begin(int saleType = 1, int commission = 0, int receiptType = 0, int recapitulation = 1, int picture = 0)
        {
            if (doubt != null && !over)
            {
                throw doubt;
            }
            if (!IsOpen)
            {
                StartAfresh();
            }
            string numberBefore = CanBeAsked ? NumberWhileNoneIsOpen() : null;
            StartAfresh();
            NumberBefore = numberBefore;
            begun = true;
            if (CanBeAsked)
            {
                session.BegunLast = this; // whatever is open from here on is this one
            }
            try
            {
                Send("paragonBegin", () => Functions.paragonBegin(session.Device, 0, saleType, commission, receiptType, recapitulation, picture));
            }
            catch (NotExecutedException)
            {
                begun = false;
                throw;
            }
            session.BegunLast = this;
            taken = true;
        }

        /// <summary>Sells an item: `total` for `quantity` of `unit` at `unitPrice` each, under the printer's letter of a VAT rate. The
        /// library sends no more than 3 bytes of `unit`. Throws CallException, TextException and AmountException.</summary>
        public void Sell(string name, decimal total, char vat, decimal quantity, decimal unitPrice, string unit)
        {
            var item = new Item(name, total, vat, quantity, unitPrice, unit);
            Line(total, "itemSale_str", () => Functions.itemSale_str(
                session.Device, 0, item.Name, item.Total, item.Vat, item.Quantity, item.UnitPrice, item.Unit));
        }

        /// <summary>Takes an item of this receipt back, which was sold with the same arguments. Throws as Sell does.</summary>
        public void Void(string name, decimal total, char vat, decimal quantity, decimal unitPrice, string unit)
        {
            var item = new Item(name, total, vat, quantity, unitPrice, unit);
            Line(-total, "itemVoid_str", () => Functions.itemVoid_str(
                session.Device, 0, item.Name, item.Total, item.Vat, item.Quantity, item.UnitPrice, item.Unit, null));
        }

        /// <summary>A discount of a sum on the item that was sold last; `operation` is the printer's number for that. Throws as Sell
        /// does.</summary>
        public void Discount(string description, decimal amount, char vat, int operation = 0)
        {
            byte[] words = Windows1250.Encode(description), sum = Amounts.Money(amount), letter = Windows1250.Encode(vat.ToString());
            Line(-amount, "itemDiscount_str", () => Functions.itemDiscount_str(session.Device, 0, words, operation, sum, letter));
        }

        /// <summary>Takes a payment under the printer's payment type. More than is due is given back. The library sends no more than 10
        /// bytes of `description`. Throws as Sell does, AmountException also for 0 and when it is paid in full, and
        /// OutcomeUnknownException when the printer's total or what is due is not the till's.</summary>
        public void Pay(int type, decimal amount, string description)
        {
            byte[] total = Amounts.Money(Total), part = Amounts.Payment(amount), words = Windows1250.Encode(description);
            RequireOpen("payment_str");
            if (Paid != 0 && Due() == 0)
            {
                throw new AmountException("Nothing is left to pay.");
            }
            if (!compared)
            {
                CompareAnswer("payment_str", questions.Total, Total, "the total");
                compared = true;
            }
            try
            {
                Send("payment_str", () => Functions.payment_str(session.Device, 0, type, total, part, noExchange, words));
            }
            catch (OutcomeUnknownException)
            {
                Count(amount); // as it was meant
                throw;
            }
            catch (RefusedException)
            {
                finished = Due(amount) == 0; // it may have been taken before its refusal, which the printer's totals tell
                CompareAnswer("payment_str", questions.Due, Due(), "what is due");
                throw;
            }
            Count(amount);
            CompareAnswer("payment_str", questions.Due, Due(), "what is due");
        }

        static readonly byte[] noExchange = Windows1250.Encode("0");

        /// <summary>Ends the receipt and returns its number; an empty one if the printer cannot be asked. `picture` is the printer's
        /// number of one, 0 for none. Throws CallException; OutcomeUnknownException also when the printer's last receipt is not
        /// this one.</summary>
        public string End(int picture = 0)
        {
            RequireOpen("paragonEnd");
            finished = true;
            Send("paragonEnd", () => Functions.paragonEnd(session.Device, 0, picture));
            if (!CanBeAsked)
            {
                over = true;
                return "";
            }
            string[] last = Answered("paragonEnd", () => Answers.WithLastNumber(session, questions.LastTotal));
            if (last[0] == NumberBefore)
            {
                throw Doubt("paragonEnd", "The printer's last receipt is still " + last[0] + ".");
            }
            Compare("paragonEnd", last[1], Total, "the total of the last receipt");
            Finish(SoldAs(last[0]));
            return last[0];
        }

        /// <summary>Cancels the receipt; the printer prints the description. Throws CallException and TextException;
        /// NotExecutedException also when it was not begun, is over, or when what is open may be another one: that is left alone;
        /// OutcomeUnknownException also when a receipt is open behind it, or another one is the last.</summary>
        public void Cancel(string description = "")
        {
            byte[] words = Windows1250.Encode(description);
            if (!begun || over || !HasBegunLast)
            {
                throw NotExecutedException.NotOurs("destroyParagon");
            }
            Send("destroyParagon", () => Functions.destroyParagon(session.Device, 0, words));
            if (CanBeAsked)
            {
                string[] last = Answered("destroyParagon", () => Answers.WithLastNumber(session, questions.State));
                if (last[0] != NumberBefore || last[1] != questions.Closed)
                {
                    throw Doubt("destroyParagon", "The printer's last receipt is " + last[0] + ", and its state " + last[1] + ".");
                }
            }
            Finish(new Recovery(Verdict.NotSold, "the receipt is cancelled"));
        }
    }
}
