-- Revenue of closed orders per customer group, month and sales channel; a block here (#...#) is comment text.
select g.group_name                                   as "Customer group",
       extract(month from o.order_date)               as "Month",
       c.channel_name                                 as "Channel",
       count(distinct o.order_id)                     as "Orders",
       sum(l.quantity * l.unit_price)                 as "Revenue",
       sum(l.quantity * (l.unit_price - l.unit_cost)) as "Margin",
       sum(case when o.is_return = 'Y' then l.quantity * l.unit_price else 0 end) as "Returned"
  from sales.order_line l
  join archive_2024.closed_order o on o.order_id = l.order_id
  join sales.customer k on k.customer_id = o.customer_id
  join sales.customer_group g on g.group_id = k.group_id
  join sales.channel c on c.channel_id = o.channel_id
  left join sales.currency_rate r
         on r.currency_code = o.currency_code
        and r.rate_date = o.order_date
        /* rates of the day; orders without one are in the home currency */
 where o.order_date >= to_date('2024-01-01', 'YYYY-MM-DD')
   and o.order_date <  to_date('2025-01-01', 'YYYY-MM-DD')
   and k.country = 'Côte d''Ivoire'
   and o.status = 'closed'
   and g.group_name in ('Wholesale','Retail','Schools','Hotels','Farmers'' markets','Public sector','Online','Export North','Export South','Restaurants','Chemist''s shops','Garden centres','Hospitals','Airlines','Caterers','Book shops','Bakers'' guild','Museums','Cinemas','Petrol stations')
   and (l.quantity > 10 or l.unit_price > 99.5 or o.is_priority = 'Y')
   and not exists (select 1
                     from sales.blocked_customer b
                    where b.customer_id = k.customer_id
                      and b.blocked_from <= o.order_date
                      and coalesce(b.blocked_to, date '9999-12-31') >= o.order_date)
   and k.customer_name not like 'Test #%'
   and l.product_id not in (select p.product_id
                              from sales.product p
                             where p.is_sample = 'Y')
 group by g.group_name,
       extract(month from o.order_date),
       c.channel_name
having sum(l.quantity * l.unit_price) > 0
 order by "Customer group", "Month", "Revenue" desc
 fetch first 500 rows only
