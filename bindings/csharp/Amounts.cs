using System;
using System.Globalization;

namespace Telvofm
{
    /// <summary>Amounts as the library takes them: text with a point and a fixed number of decimals, in every culture.</summary>
    static class Amounts
    {
        internal static byte[] Money(decimal amount)
        {
            return Windows1250.Encode(Written(amount));
        }

        internal static byte[] Quantity(decimal amount)
        {
            return Windows1250.Encode(Fixed(amount, 3));
        }

        /// <summary>An amount paid. Zero is refused: for some printers it means all that is due.</summary>
        internal static byte[] Payment(decimal amount)
        {
            if (amount == 0)
            {
                throw new AmountException("A payment of 0 can mean all that is due; say the amount.");
            }
            return Money(amount);
        }

        internal static string Written(decimal amount)
        {
            return Fixed(amount, 2);
        }

        /// <summary>Nothing is rounded: what does not fit is refused.</summary>
        static string Fixed(decimal amount, int decimals)
        {
            if (decimal.Round(amount, decimals) != amount)
            {
                throw new AmountException(amount.ToString(CultureInfo.InvariantCulture) + " has more than " + decimals + " decimals; round it first.");
            }
            decimal plain = amount == 0 ? 0 : amount; // there is no -0.00
            return plain.ToString("F" + decimals, CultureInfo.InvariantCulture);
        }
    }

    /// <summary>An amount that cannot be sent. Nothing was sent.</summary>
    public sealed class AmountException : TelvofmException
    {
        internal AmountException(string message) : base(message) { }
    }
}
