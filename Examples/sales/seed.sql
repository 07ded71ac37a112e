-- A few thousand rows more, for queries that have something to add up. They come out the same each time: what looks like
-- chance is a sequence of remainders, x -> x * 48271 mod 2147483647. For SQLite, behind schema.sql.

begin;

insert into region values (4, 'East'), (5, 'West'), (6, 'Øresund'), (7, 'Val d''Aoste'), (8, 'Łódź');

insert into product values
    (5, 'Earl Grey', 'tea', 'Earl Grey', 'Earl Grey'), (6, 'Oolong', 'tea', 'Oolong', 'Oolong'),
    (7, 'Peppermint', 'tea', 'Pfefferminztee', 'Menthe'), (8, 'Rooibos', 'tea', 'Rotbusch', null),
    (9, 'Mocha', 'coffee', 'Mokka', 'Moka'), (10, 'Decaf', 'coffee', 'Koffeinfreier Kaffee', 'Décaféiné'),
    (11, 'Arabica beans', 'coffee', 'Arabica-Bohnen', null), (12, 'Honey', 'grocery', 'Honig', 'Miel'),
    (13, 'Shortbread', 'grocery', 'Mürbegebäck', 'Sablés'), (14, 'Rice', 'grocery', 'Reis', 'Riz'),
    (15, 'Cinnamon', 'spice', 'Zimt', 'Cannelle'), (16, 'Cardamom', 'spice', 'Kardamom', 'Cardamome'),
    (17, 'Pepper', 'spice', 'Pfeffer', 'Poivre'), (18, 'Saffron', 'spice', 'Safran', 'Safran');

-- Every family runs every kind of business: 24 * 8 customers from number 5 on.
with family(nr, family) as (values
    (0, 'Andersen'), (1, 'Bauer'), (2, 'Brontë'), (3, 'Castillo'), (4, 'D''Arcy'), (5, 'Dubois'), (6, 'Fischer'),
    (7, 'García'), (8, 'Håkansson'), (9, 'Ibsen'), (10, 'Jónsdóttir'), (11, 'Keller'), (12, 'Lefèvre'), (13, 'Moreau'),
    (14, 'Núñez'), (15, 'O''Hara'), (16, 'Petit'), (17, 'Quist'), (18, 'Rossi'), (19, 'Smith'), (20, 'Tóth'),
    (21, 'Ueda'), (22, 'Vogel'), (23, 'Weiß')),
kind(nr, kind) as (values
    (0, 'Café %s'), (1, '%s & Sons'), (2, '%s Foods'), (3, 'Teehaus %s'), (4, 'Épicerie %s'), (5, 'Hotel %s'),
    (6, '%s Brothers'), (7, 'Bakery %s'))
insert into customer
select 5 + family.nr * 8 + kind.nr, printf(kind, family), 1 + (family.nr * 3 + kind.nr * 5 + kind.nr / 3) % 8
from family, kind;

-- 2000 orders over the three years 2023 to 2025. Who is late in paying is late at the end.
with recursive draw(nr, x, y) as (
    values (1, 20240229, 48271)
    union all
    select nr + 1, x * 48271 % 2147483647, y * 48271 % 2147483647 from draw where nr < 2000)
insert into sales_order
select 5 + nr, printf('C#%05d', nr), 1 + x % 196, date('2023-01-01', printf('+%d days', nr * 1095 / 2000)),
       case when y % 29 = 0 then 'void' when nr > 1700 and y % 3 = 0 then 'open' else 'paid' end
from draw;

-- One to four lines for each of them, with different products.
with recursive draw(nr, x) as (
    values (6, 31415926)
    union all
    select nr + 1, x * 48271 % 2147483647 from draw where nr < 2005),
line(line_no) as (values (1), (2), (3), (4)),
bought as (
    select nr, line_no, 1 + (x + line_no * 5) % 18 as product_id, 1 + (x / 18 + line_no * 7) % 24 as quantity
    from draw join line on line_no <= 1 + x / 7 % 4)
insert into order_line
select nr, line_no, product_id, quantity, round(quantity * price, 2), round(quantity * price * rate, 2)
from bought
join (select product_id as id, (250 + product_id * 7 % 19 * 45) / 100.0 as price,
             case category when 'coffee' then 0.19 else 0.07 end as rate
      from product) on id = product_id;

commit;
