namespace Telvofm
{
    /// <summary>Amounts as the whole numbers that the library takes. Nothing is rounded: an amount with more decimals than
    /// the printer takes, or too large, is a mistake of the till.</summary>
    static class Amounts
    {
        /// <summary>Money, in hundredths.</summary>
        internal static int Hundredths(decimal amount)
        {
            return Whole(amount, 100m, 2);
        }

        /// <summary>Quantities, in thousandths.</summary>
        internal static int Thousandths(decimal amount)
        {
            return Whole(amount, 1000m, 3);
        }

        /// <summary>Unit prices and exchange rates, in ten-thousandths.</summary>
        internal static int TenThousandths(decimal amount)
        {
            return Whole(amount, 10000m, 4);
        }

        static int Whole(decimal amount, decimal units, int decimals)
        {
            if (amount < int.MinValue / units || amount > int.MaxValue / units)
            {
                throw new TelvofmException("The amount " + Written(amount) + " is too large for the printer.");
            }
            decimal whole = amount * units;
            if (decimal.Truncate(whole) != whole)
            {
                throw new TelvofmException("The amount " + Written(amount) + " has more than " + decimals +
                                           " decimals; round it as the law of your country wants it.");
            }
            return (int)whole;
        }

        /// <summary>As the printer writes money, whatever the till's culture is.</summary>
        internal static string Money(decimal amount)
        {
            return (Hundredths(amount) / 100m).ToString("0.00", System.Globalization.CultureInfo.InvariantCulture);
        }

        static string Written(decimal amount)
        {
            return amount.ToString(System.Globalization.CultureInfo.InvariantCulture);
        }
    }
}
