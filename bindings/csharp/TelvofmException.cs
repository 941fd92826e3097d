using System;

namespace Telvofm
{
    /// <summary>Whatever goes wrong here; the message says what to do.</summary>
    public abstract class TelvofmException : Exception
    {
        /// <summary>With a sentence, and what it comes from.</summary>
        protected TelvofmException(string message, Exception cause = null) : base(message, cause) { }
    }

    /// <summary>The library is missing, is another one, or is loaded into a 32-bit process.</summary>
    public sealed class LibraryException : TelvofmException
    {
        internal LibraryException(string message, Exception cause = null) : base(message, cause) { }
    }

    /// <summary>A call that did not succeed.</summary>
    public abstract class CallException : TelvofmException
    {
        /// <summary>The function of telvofm.h.</summary>
        public string Call { get; private set; }

        /// <summary>What it returned.</summary>
        public int Code { get; private set; }

        /// <summary>The code's name.</summary>
        public string Name { get; private set; }

        /// <summary>What it means, in one sentence.</summary>
        public string Happened { get; private set; }

        /// <summary>What to do, in one sentence.</summary>
        public string Advice { get; private set; }

        /// <summary>Whether the printer has carried the command out.</summary>
        public Executed Executed { get; private set; }

        /// <summary>With all of it; the message is made of them.</summary>
        protected CallException(string call, int code, string name, string happened, Executed executed, string advice)
            : base(call + ": code " + code + " (" + name + "): " + happened + " " + Sentence(executed) + " " + advice)
        {
            Call = call;
            Code = code;
            Name = name;
            Happened = happened;
            Executed = executed;
            Advice = advice;
        }

        /// <summary>Of a question that was not answered, for a sentence: what failed, or that the answer is none.</summary>
        internal string Reason
        {
            get { return Code == 0 ? Happened.TrimEnd('.') : Call + ": code " + Code; }
        }

        static string Sentence(Executed executed)
        {
            switch (executed)
            {
                case Executed.Yes: return "It was carried out.";
                case Executed.No: return "It was not carried out.";
                default: return "Whether it was carried out is unknown.";
            }
        }

        /// <summary>What a call failed with that was answered in time, or late: then the printer may have refused what it
        /// had done already.</summary>
        internal static CallException Of(string call, int code, bool late)
        {
            CodeMeaning meaning = Array.Find(CodeMeaning.All, each => each.First <= code && code <= each.Last);
            if (meaning == null)
            {
                return new OutcomeUnknownException(call, code, "undocumented", "The library returned a code that it does not document.",
                                                   "Ask the printer for its last receipt and totals before you repeat the call.");
            }
            if (meaning.Executed != Executed.No || (late && code > 0))
            {
                return new OutcomeUnknownException(call, code, meaning.Name, meaning.Happened, meaning.Advice);
            }
            if (code > 0)
            {
                return new RefusedException(call, code, meaning.Name, meaning.Happened, meaning.Advice);
            }
            return new NotExecutedException(call, code, meaning.Name, meaning.Happened, meaning.Advice);
        }
    }

    /// <summary>The printer understood the call and refused it.</summary>
    public sealed class RefusedException : CallException
    {
        internal RefusedException(string call, int code, string name, string happened, string advice)
            : base(call, code, name, happened, Executed.No, advice) { }
    }

    /// <summary>Nothing reached the printer: none is open, this session is closed, or this receipt is not open.</summary>
    public sealed class NotExecutedException : CallException
    {
        internal NotExecutedException(string call, int code, string name, string happened, string advice)
            : base(call, code, name, happened, Executed.No, advice) { }

        /// <summary>Of a call on a session that is closed.</summary>
        internal static NotExecutedException Closed(string call)
        {
            return new NotExecutedException(call, -1, "notOpen", "This session is closed.", "Open another session.");
        }

        /// <summary>Of a call on a receipt that is none of the printer's now.</summary>
        internal static NotExecutedException NotOurs(string call)
        {
            return new NotExecutedException(call, -1, "notOpen", "This receipt was not begun, is over, or another one may be open.",
                                            "To cancel another one call destroyParagon through the session.");
        }

        /// <summary>Of what would go into another receipt than the one that it is called on.</summary>
        internal static NotExecutedException NotBegun(string call)
        {
            return new NotExecutedException(call, -1, "notOpen", "This receipt is not open: its begin has not worked, or it is over.",
                                            "Call Recover if Begin failed, and begin it again.");
        }

        /// <summary>Of a second begin of a receipt that is open.</summary>
        internal static NotExecutedException AlreadyBegun(string call)
        {
            return new NotExecutedException(call, -1, "notOpen", "This receipt is open already, and goes on.", "End it or cancel it first.");
        }

        /// <summary>Of a begin while a receipt is open that is not this one.</summary>
        internal static NotExecutedException AnotherOpen(string call)
        {
            return new NotExecutedException(call, -1, "notOpen", "Another receipt is open, and is left alone.", "Call Recover.");
        }

        /// <summary>Of a begin when the printer does not say whether a receipt is open.</summary>
        internal static NotExecutedException Unanswered(string call, CallException question)
        {
            return new NotExecutedException(call, -1, "notOpen", "The printer does not say whether a receipt is open (" + question.Reason + ").",
                                            "Begin it again when the printer answers.");
        }
    }

    /// <summary>The printer may have carried the command out, or not, or twice.</summary>
    public sealed class OutcomeUnknownException : CallException
    {
        internal OutcomeUnknownException(string call, int code, string name, string happened, string advice)
            : base(call, code, name, happened, Executed.Unknown, advice) { }

        /// <summary>After a call that returned 0 and left the printer with other totals than it should.</summary>
        internal static OutcomeUnknownException Doubt(string call, string happened)
        {
            return new OutcomeUnknownException(call, 0, "totals", happened, "Call Recover.");
        }
    }
}
