-- A small trading company: who bought what, where and when. Standard SQL; dates are texts in ISO form.

create table region (
    region_id  integer primary key,
    name       varchar(40) not null unique
);

create table customer (
    customer_id integer primary key,
    name        varchar(80) not null,
    region_id   integer not null references region
);

create table product (
    product_id integer primary key,
    name       varchar(80) not null,
    category   varchar(40) not null,
    name_de    varchar(80),
    name_fr    varchar(80)
);

create table sales_order (
    order_id    integer primary key,
    "Order #"   varchar(20) not null unique,
    customer_id integer not null references customer,
    order_date  char(10) not null,
    status      varchar(10) not null
);

create table order_line (
    order_id   integer not null references sales_order,
    line_no    integer not null,
    product_id integer not null references product,
    quantity   integer not null,
    net_price  decimal(10, 2) not null,
    tax        decimal(10, 2) not null,
    primary key (order_id, line_no)
);

insert into region values (1, 'North'), (2, 'South'), (3, 'Côte d''Azur');

insert into customer values
    (1, 'Fjord Foods', 1), (2, 'Harbour Café', 1), (3, 'O''Brien & Sons', 2), (4, 'Épicerie Martin', 3);

insert into product values
    (1, 'Green tea', 'tea', 'Grüner Tee', 'Thé vert'),
    (2, 'Black tea', 'tea', 'Schwarzer Tee', 'Thé noir'),
    (3, 'Espresso', 'coffee', 'Espresso', 'Expresso'),
    (4, 'Cane sugar', 'grocery', 'Rohrzucker', 'Sucre de canne');

insert into sales_order values
    (1, 'A#1001', 1, '2024-01-15', 'paid'),
    (2, 'A#1002', 2, '2024-02-03', 'paid'),
    (3, 'A#1003', 3, '2024-02-29', 'open'),
    (4, 'B#0001', 4, '2024-03-31', 'paid'),
    (5, 'B#0002', 1, '2024-04-01', 'open');

insert into order_line values
    (1, 1, 1, 20, 180.00, 12.60), (1, 2, 4, 5, 15.00, 1.05),
    (2, 1, 3, 12, 240.00, 45.60),
    (3, 1, 2, 8, 64.00, 4.48), (3, 2, 3, 2, 40.00, 7.60),
    (4, 1, 1, 3, 27.00, 1.89),
    (5, 1, 2, 30, 240.00, 16.80);
