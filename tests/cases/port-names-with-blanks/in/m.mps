NAME          BLANKS
ROWS
 N  TOTAL
 L  MY ROW
COLUMNS
    TWO WRD   TOTAL             -1.0   MY ROW            2.0
    A B C     TOTAL             -1.0   MY ROW            3.0
    PLAIN     TOTAL             -1.0   MY ROW            1.0
RHS
    RHS       MY ROW             9.0
ENDATA
